// Conversions of the 96-bit decimal.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/value.h"

namespace automation {

double DoubleOf(const Decimal& decimal);
// All digits, `decimalSeparator` in front of the last `scale` of them, trailing zeros kept.
std::u16string DecimalText(const Decimal& decimal, char16_t decimalSeparator);
// The decimal of a plain text ("-12.50", "." as separator, at most 28 places), nothing when it is
// none or too large. The scale is the number of places given.
std::optional<Decimal> ParseDecimal(std::u16string_view text);
Decimal DecimalOf(std::int64_t number);

}  // namespace automation
