// From the text in which a driver hands over a field to the value that ADO's readers see.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "automation/value.h"
#include "odbc/column.h"

namespace odbc {

// Whole numbers become the column's width, or the next that holds them: 16 bits, 32 bits, decimal
// (so a 64-bit count is a 32-bit number as long as it fits). A single is a double of its seven
// digits. Dates are read to the second. Binary data is its hexadecimal text. SQLite lets any
// content stand in any column: a text that is no value of the column's kind stays the text that it
// is, so that nothing is lost.
automation::Value ToValue(std::u16string text, ColumnKind kind);

// What a product's driver means by a text that is not read as above; nothing for any other text.
using OwnReading = std::optional<automation::Value> (*)(std::u16string_view text, ColumnKind kind);

// Digits with an optional sign, point and exponent; digits beyond 28 decimals or 96 bits are
// rounded off behind the point. Nothing when the text is no such number or its whole part is too
// large.
std::optional<automation::Decimal> ParseDecimal(std::u16string_view text);

// As such a number, rounded off to four decimals.
std::optional<automation::Currency> ParseCurrency(std::u16string_view text);

// "yyyy-mm-dd", or "mm-dd-yyyy" as the host writes it, then nothing or "hh:mm[:ss[.fraction]]"
// behind a blank or a "T"; what follows the fraction (a zone) is ignored.
std::optional<automation::Date> ParseTimestamp(std::u16string_view text);

}  // namespace odbc
