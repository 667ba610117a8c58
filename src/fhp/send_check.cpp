#include "fhp/send_check.h"

#include <algorithm>

#include "automation/text.h"
#include "db/connection_state.h"
#include "fhp/tooth_scanner.h"
#include "platform/conversions.h"
#include "platform/database.h"
#include "util/error_trap.h"

namespace fhp {
namespace {

constexpr std::int16_t kTooManyMeasures = 100;
constexpr std::u16string_view kTooManyMeasuresText =
    u"Vilnor Link kan max ta emot 4 st planerade åtgärder per tand, ÖK och UK\r\n"
    u"Väljer du OK följer inte samtliga uppgifter med från Kestra Dental";

// Measures are separated by single blanks. Kept: two blanks in a row, or one at the end, make an
// empty measure that counts; the host's users know the limit by this count.
bool IsTooMany(std::u16string_view measures) {
  constexpr auto kMostBlanks = 3;
  return std::count(measures.begin(), measures.end(), u' ') > kMostBlanks;
}

bool AnyToothHasTooMany(platform::Recordset& application) {
  const automation::Value plan = application.Field(u"PlanTreatm");
  if (plan.IsNull()) {
    return false;
  }
  const std::u16string text = platform::ToText(plan);
  ToothScanner teeth(text, kSendCheckScan);
  while (const auto tooth = teeth.Next()) {
    if (IsTooMany(tooth->text)) {
      return true;
    }
  }
  return false;
}

// One leading blank does not count and is removed from the record in memory.
bool JawHasTooMany(platform::Recordset& application, const char16_t* column) {
  const automation::Value plan = application.Field(column);
  if (plan.IsNull()) {
    return false;
  }
  std::u16string measures = platform::ToText(plan);
  if (measures.starts_with(u' ')) {
    measures = automation::Mid(measures, 2);
    application.SetField(column, measures);
  }
  return IsTooMany(measures);
}

}  // namespace

bool OKToSend(std::int32_t fhpId, std::int16_t& errCode, std::u16string& errMsg) {
  return util::UnderTrap(u" in OKToSend", util::kBVilnorIcon, [&] {
    const auto rows = db::WithGDB([&](auto& gDB) { return gDB.GetFHPById(fhpId); });
    platform::Recordset& application = platform::Require(rows);
    // The check ends at the first tooth or jaw with too many measures.
    const bool fits = !AnyToothHasTooMany(application) &&
                      !JawHasTooMany(application, u"PlanTreatmUJaw") &&
                      !JawHasTooMany(application, u"PlanTreatmLJaw");
    errCode = fits ? std::int16_t{0} : kTooManyMeasures;
    errMsg = fits ? std::u16string() : std::u16string(kTooManyMeasuresText);
    return fits;
  });
}

}  // namespace fhp
