#include "fhp/identity.h"

#include "automation/text.h"

namespace fhp {

namespace {

using automation::Decimal10;

// The first character: both units if it is a surrogate pair.
std::u16string_view Initial(std::u16string_view name) {
  const auto isHalf = [&](std::size_t at, char16_t first) {
    return at < name.size() && (name[at] & 0xFC00) == first;
  };
  return name.substr(0, isHalf(0, 0xD800) && isHalf(1, 0xDC00) ? 2 : 1);
}

}  // namespace

std::u16string UserDefData(const HostArguments& arguments, const Record& application) {
  std::u16string text;
  for (const std::int32_t number : {arguments.pid, arguments.bid, arguments.rid, arguments.fhpId}) {
    text.append(Decimal10(number)).append(u"&");
  }
  return text.append(application.TextOrEmpty(u"CaseNo"));
}

std::u16string CaseTitle(const ApplicationRecords& records) {
  // The full personal identity number begins with the century.
  constexpr std::int32_t kYearStart = 3;
  constexpr std::int32_t kDateLength = 6;
  return automation::Mid(records.personNumber, kYearStart, kDateLength)
      .insert(0, u"FHP")
      .append(Initial(records.patient.TextOrEmpty(u"fornavn")))
      .append(Initial(records.patient.TextOrEmpty(u"Navn")));
}

}  // namespace fhp
