// The compensation rule of one cost-estimate row (docs/dental-care-subsidy.md).
#pragma once

#include <string>

#include "automation/value.h"
#include "util/attempt.h"

namespace util {

// The patient's age group in the dental-care subsidy.
enum class AgeGroup { Under20, From20To29, From30To64, From65 };

// The group of the age that the patient reaches during the reference date's calendar year. A date
// outside the years 100 to 9999 shows error 6.
Attempt<AgeGroup> GetAgeGroup(automation::Date birthDate, automation::Date referenceDate);

// The rule's input from a row, its application and the patient. Amounts and the rate number may be
// Null, which counts as 0.
struct RateCompensationInput {
  // The row's RegDate; the patient's age is that reached in its calendar year.
  automation::Date regDate;
  // The patient's FDato.
  automation::Date birthDate;
  // The fee, the base amount and the amount without reduction. An estimate row holds one amount
  // only, so its Amount feeds all three.
  automation::Value amount1;
  automation::Value amount2;
  automation::Value amount3;
  // The row's IncrComp.
  bool increasedComp = false;
  // The application's IncreasedComp: the row's mark counts only if it was applied for.
  bool increasedCompApplied = false;
  automation::Value rateNo;
  std::u16string debit;
};

struct RateCompensation {
  double amount1 = 0;
  double amount2 = 0;
  double amount3 = 0;
  // The row belongs on the cost-estimate form.
  bool accepted = false;
  bool operator==(const RateCompensation&) const = default;
};

// Shows the runtime's error and returns zeros, not accepted, for an amount or rate number that is
// not a number (13) or too large (6), and for a date outside the years 100 to 9999.
RateCompensation GetRateCompensation(const RateCompensationInput& input);

}  // namespace util
