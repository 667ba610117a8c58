#include "util/age_group.h"

#include "automation/date.h"
#include "util/guarded.h"

namespace util {

std::int16_t GetAgeGroup(automation::Date birthDate, automation::Date referenceDate) {
  return Guarded(u" in GetAgeGroup", kModBVilnorIcon, [&]() -> std::int16_t {
    const int age = automation::PartsOf(referenceDate).year - automation::PartsOf(birthDate).year;
    if (age < 20) {
      return kUnder20;
    }
    if (age < 30) {
      return kFrom20To29;
    }
    return age < 65 ? kFrom30To64 : kFrom65;
  });
}

}  // namespace util
