// The patient's age group in the dental-care subsidy (docs/dental-care-subsidy.md).
#pragma once

#include <cstdint>

#include "automation/value.h"

namespace util {

inline constexpr std::int16_t kUnder20 = 1;
inline constexpr std::int16_t kFrom20To29 = 2;
inline constexpr std::int16_t kFrom30To64 = 3;
inline constexpr std::int16_t kFrom65 = 4;

// The group of the age that the patient reaches during the reference date's calendar year. A date
// outside the years 100 to 9999 shows error 6 and gives 0.
std::int16_t GetAgeGroup(automation::Date birthDate, automation::Date referenceDate);

}  // namespace util
