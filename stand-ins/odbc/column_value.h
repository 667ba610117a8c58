// Converts the text that a driver returns for a field to the value that ADO's readers see.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "automation/value.h"
#include "odbc/column.h"

namespace odbc {

// Whole numbers get the column's width, or the next that holds them: 16 bits, 32 bits, decimal (so
// a 64-bit count is a 32-bit number as long as it fits). A single becomes a double with its seven
// digits. Dates are read to the second. Binary data becomes its hexadecimal text. SQLite allows any
// content in any column: a text that is not a value of the column's kind stays text, so that
// nothing is lost.
automation::Value ToValue(std::u16string text, ColumnKind kind);

// Reads texts to which a product's driver gives another meaning; nullopt for any other text.
using OwnReading = std::optional<automation::Value> (*)(std::u16string_view text, ColumnKind kind);

// Digits with an optional sign, point and exponent; decimals beyond 28 places or 96 bits are
// rounded off. nullopt if the text is not such a number or its whole part is too large.
std::optional<automation::Decimal> ParseDecimal(std::u16string_view text);

// The same, rounded to four decimals.
std::optional<automation::Currency> ParseCurrency(std::u16string_view text);

// "yyyy-mm-dd", or "mm-dd-yyyy" as the host writes it, optionally followed by a blank or "T" and
// "hh:mm[:ss[.fraction]]"; anything after the fraction (a zone) is ignored.
std::optional<automation::Date> ParseTimestamp(std::u16string_view text);

}  // namespace odbc
