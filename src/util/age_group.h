// The patient's age group in the dental-care subsidy (docs/dental-care-subsidy.md).
#pragma once

#include "automation/value.h"
#include "util/attempt.h"

namespace util {

enum class AgeGroup { Under20, From20To29, From30To64, From65 };

// The group of the age that the patient reaches during the reference date's calendar year. A date
// outside the years 100 to 9999 shows error 6.
Attempt<AgeGroup> GetAgeGroup(automation::Date birthDate, automation::Date referenceDate);

}  // namespace util
