// Conversions of the 96-bit decimal.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "automation/value.h"

namespace automation {

double DoubleOf(const Decimal& decimal);
// All digits, with `decimalSeparator` before the last `scale` of them; trailing zeros are kept.
std::u16string DecimalText(const Decimal& decimal, char16_t decimalSeparator);
// Parses a plain text ("-12.50", "." as separator, at most 28 decimals); nullopt if it is not a
// decimal or too large. The scale is the number of decimals in the text.
std::optional<Decimal> ParseDecimal(std::u16string_view text);
Decimal DecimalOf(std::int64_t number);

}  // namespace automation
