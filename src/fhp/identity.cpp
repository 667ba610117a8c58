#include "fhp/identity.h"

#include "automation/text.h"

namespace fhp {

namespace {

using automation::Decimal10;

// The first character: both units if it is a surrogate pair.
std::u16string Initial(const std::u16string& name) {
  const auto isHalf = [&](std::size_t at, char16_t first) {
    return at < name.size() && (name[at] & 0xFC00) == first;
  };
  return automation::Left(name, isHalf(0, 0xD800) && isHalf(1, 0xDC00) ? 2 : 1);
}

}  // namespace

std::u16string UserDefData(const HostArguments& arguments, const Record& application) {
  return Decimal10(arguments.pid) + u"&" + Decimal10(arguments.bid) + u"&" +
         Decimal10(arguments.rid) + u"&" + Decimal10(arguments.fhpId) + u"&" +
         application.TextOrEmpty(u"CaseNo");
}

std::u16string CaseTitle(const ApplicationRecords& records) {
  // The full personal identity number begins with the century.
  constexpr std::int32_t kYearStart = 3;
  constexpr std::int32_t kDateLength = 6;
  return u"FHP" + automation::Mid(records.personNumber, kYearStart, kDateLength) +
         Initial(records.patient.TextOrEmpty(u"fornavn")) +
         Initial(records.patient.TextOrEmpty(u"Navn"));
}

}  // namespace fhp
