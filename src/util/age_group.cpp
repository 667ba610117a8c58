#include "util/age_group.h"

#include "automation/date.h"
#include "util/error_trap.h"

namespace util {

Attempt<AgeGroup> GetAgeGroup(automation::Date birthDate, automation::Date referenceDate) {
  return Try(u" in GetAgeGroup", kModBVilnorIcon, [&] {
    const int age = automation::PartsOf(referenceDate).year - automation::PartsOf(birthDate).year;
    if (age < 20) {
      return AgeGroup::Under20;
    }
    if (age < 30) {
      return AgeGroup::From20To29;
    }
    return age < 65 ? AgeGroup::From30To64 : AgeGroup::From65;
  });
}

}  // namespace util
