// The classic runtime's type conversions. Shared rules: Null raises 94 "Invalid use of Null"; text
// that is not a number or date raises 13; a number outside the target's range raises 6; Empty reads
// as 0, false or the empty text. The locale decides how numbers and dates read and print.
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
// Any number except 0 is true; text is "True" or "False" in any case, or a number.
bool ToBool(const Value& value, const Regional& regional);
// Booleans become "True" or "False"; numbers have no grouping, and a double at most 15 significant
// digits; a date is printed as by DateText.
std::u16string ToText(const Value& value, const Regional& regional);
Date ToDate(const Value& value, const Regional& regional);

// Rounds `number` to the precision of a double. A 32-bit processor may calculate with more digits,
// depending on the compiler and on the host's settings, so a result that decides something goes
// through here.
inline double InDoubleDigits(double number) {
  volatile double digits = number;
  return digits;
}
// Rounds half to even into 32 bits; error 6 outside.
std::int32_t RoundToInt32(double number);
// A single-precision number by its seven significant digits: 1.1 stays 1.1, not 1.10000002384186.
double WidenSingle(float number);
// The number in a text (sign, grouping, decimal separator, exponent, surrounding blanks); nullopt
// if there is none, infinite beyond a double's range.
std::optional<double> ParseNumber(std::u16string_view text, const Regional& regional);
std::u16string NumberText(double number, const Regional& regional);
// Appends the number in the "Fixed" format: at least one digit before and exactly two after the
// decimal separator, halves rounded away from zero, no grouping.
void AppendFixed(std::u16string& text, double number, const Regional& regional);

}  // namespace automation
