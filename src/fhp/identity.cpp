#include "fhp/identity.h"

#include "automation/text.h"

namespace fhp {

using automation::Decimal10;
using automation::Left;

std::u16string UserDefData(const HostArguments& arguments, const Record& application) {
  return Decimal10(arguments.pid) + u"&" + Decimal10(arguments.bid) + u"&" +
         Decimal10(arguments.rid) + u"&" + Decimal10(arguments.fhpId) + u"&" +
         application.TextOrEmpty(u"CaseNo");
}

std::u16string CaseTitle(const ApplicationRecords& records) {
  // The full personal identity number starts with the century.
  constexpr std::int32_t kYearStart = 3;
  constexpr std::int32_t kDateLength = 6;
  return u"FHP" + automation::Mid(records.personNumber, kYearStart, kDateLength) +
         Left(records.patient.TextOrEmpty(u"fornavn"), 1) +
         Left(records.patient.TextOrEmpty(u"Navn"), 1);
}

}  // namespace fhp
