// The classic runtime's conversions between types. Shared rules: Null raises 94 "Invalid use of
// Null"; text that is no number or no date raises 13; a number outside the target raises 6; Empty
// reads as 0, false or the empty text. The locale decides how numbers and dates read and print.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/regional.h"
#include "automation/value.h"

namespace automation {

// Whole numbers round half to even (2.5 is 2, 3.5 is 4). True is -1.
std::int16_t ToInt16(const Value& value, const Regional& regional);
std::int32_t ToInt32(const Value& value, const Regional& regional);
double ToDouble(const Value& value, const Regional& regional);
// Any number but 0 is true; text is "True" or "False" in any case, or a number.
bool ToBool(const Value& value, const Regional& regional);
// Boolean "True" or "False"; numbers without grouping, a double with at most 15 significant digits;
// a date as DateText gives it.
std::u16string ToText(const Value& value, const Regional& regional);
Date ToDate(const Value& value, const Regional& regional);

// `number` in the digits of a double. While it calculates, a 32-bit processor keeps more of them,
// or not, as the compiler likes and the host has set it; a result that decides something goes
// through here.
inline double InDoubleDigits(double number) {
  volatile double digits = number;
  return digits;
}
// Rounds half to even into 32 bits; error 6 outside.
std::int32_t RoundToInt32(double number);
// A single-precision number by its seven significant digits: 1.1 is 1.1, not 1.10000002384186.
double WidenSingle(float number);
// The number that a text holds (sign, grouping, decimal separator, exponent, blanks around), or
// nothing; infinite beyond a double's range.
std::optional<double> ParseNumber(std::u16string_view text, const Regional& regional);
std::u16string NumberText(double number, const Regional& regional);
// "Fixed": at least one digit before and exactly two behind the decimal separator, half away from
// zero, no grouping.
std::u16string FixedText(double number, const Regional& regional);

}  // namespace automation
