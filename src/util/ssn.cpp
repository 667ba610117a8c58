#include "util/ssn.h"

#include <cstdint>

#include "automation/date.h"
#include "automation/text.h"
#include "platform/clock.h"
#include "platform/conversions.h"
#include "platform/platform.h"
#include "util/error_trap.h"

namespace util {
namespace {

// A hundred years in dates read as numbers, 20261116 - 19261116.
constexpr std::int32_t kHundredYears = 1000000;
constexpr std::int32_t kShortFormLength = 11;

// The date's digits YYYYMMDD read as one number.
std::int32_t DateNumber(automation::Date date) {
  const automation::DateParts parts = automation::PartsOf(date);
  return parts.year * 10000 + parts.month * 100 + parts.day;
}

// A value as concatenation appends it: Null adds nothing.
std::u16string Appended(const automation::Value& value) {
  return value.IsNull() ? std::u16string() : platform::ToText(value);
}

}  // namespace

std::u16string MakeSSN(automation::Date birthDate, const automation::Value& persNr, bool fullForm) {
  return UnderTrap(u" in MakeSSN", kModBVilnorIcon, [&] {
    const automation::Date today = platform::Current().clock.Now();
    const bool hundred = DateNumber(today) - DateNumber(birthDate) >= kHundredYears;
    const std::u16string number =
        automation::FormatDate(birthDate, u"yyyymmdd") + (hundred ? u"+" : u"-") + Appended(persNr);
    return fullForm ? number : automation::Right(number, kShortFormLength);
  });
}

}  // namespace util
