#include "fhp/estimate_decision.h"

#include "automation/date.h"
#include "automation/text.h"
#include "util/date_format.h"

namespace fhp {
namespace {

using automation::Decimal10;

constexpr int kAgeOfEstimate = 65;
constexpr std::int32_t kPlainParticipant = -32000;
constexpr std::int32_t kEstimateParticipant = -32001;

}  // namespace

bool IncludesEstimate(automation::Date registered, automation::Date birthDate) {
  const automation::DateParts day = automation::PartsOf(registered);
  const automation::Date registrationDay =
      util::DateFromParts(Decimal10(day.year), Decimal10(day.month), Decimal10(day.day));
  const automation::Date birthYear =
      util::DateFromParts(Decimal10(automation::PartsOf(birthDate).year), u"01", u"01");
  const automation::Date boundary = automation::AddYears(birthYear, kAgeOfEstimate);
  return automation::DaysBetween(registrationDay, boundary) < 0;
}

std::int32_t ParticipantCode(bool includeEstimate) {
  return includeEstimate ? kEstimateParticipant : kPlainParticipant;
}

}  // namespace fhp
