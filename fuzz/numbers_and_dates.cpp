// Converts texts to numbers and dates and back, in a Swedish or a US locale. The first byte chooses
// the locale.
#include <array>
#include <cmath>

#include "automation/automation_error.h"
#include "automation/conversion.h"
#include "automation/date.h"
#include "fuzz/world.h"

namespace {

using automation::Regional;

void ThereAndBack(const std::u16string& text, const Regional& regional) {
  if (const auto date = automation::ParseDate(text, regional)) {
    const auto again = automation::ParseDate(automation::DateText(*date, regional), regional);
    const bool isTimeAlone = automation::PartsOf(*date).year == 1899;
    fuzz::Require(isTimeAlone ||
                  (again && automation::PartsOf(*again) == automation::PartsOf(*date)));
  }
  // Beyond a double's range a number reads as infinite, which the conversions refuse.
  const auto number = automation::ParseNumber(text, regional);
  if (number && std::isfinite(*number)) {
    const auto again = automation::ParseNumber(automation::NumberText(*number, regional), regional);
    fuzz::Require(again && std::abs(*again - *number) <= 1e-14 * std::abs(*number));
    std::u16string fixed;
    automation::AppendFixed(fixed, *number, regional);
  }
}

template <class Convert>
void RaisesNothingElse(Convert convert) {
  try {
    convert();
  } catch (const automation::AutomationError& error) {
    fuzz::Require(error.number() == 6 || error.number() == 13 || error.number() == 5);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  static const std::array<Regional, 2> locales = {Regional{}, Regional{.shortDate = u"yyyy-MM-dd",
                                                                       .decimalSeparator = u',',
                                                                       .groupSeparator = u'\u00A0',
                                                                       .twelveHourClock = false}};
  const Regional& regional = locales.at(data[0] % locales.size());
  const std::u16string text = fuzz::Latin1(data + 1, size - 1);
  ThereAndBack(text, regional);
  const automation::Value value = text;
  RaisesNothingElse([&] { automation::ToInt16(value, regional); });
  RaisesNothingElse([&] { automation::ToInt32(value, regional); });
  RaisesNothingElse([&] { automation::ToBool(value, regional); });
  RaisesNothingElse([&] { automation::ToDate(value, regional); });
  return 0;
}
