// Translates the host's statements for the product that they are sent to. The host writes them for
// a product that knows `@@Identity` and reads month-first dates; everything else in a statement is
// left unchanged.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "odbc/dialect.h"

namespace odbc {

// Whether a column, both names spelt as in the statement, is declared as a date or timestamp.
using IsDateColumn = std::function<bool(std::u16string_view table, std::u16string_view column)>;

// The statement for the dialect's product:
// - `@@Identity`, in any case, becomes the dialect's expression.
// - #mm-dd-yyyy# and #mm-dd-yyyy hh:mm:ss# become 'yyyy-mm-dd' and 'yyyy-mm-dd hh:mm:ss', which
//   every product reads alike.
// - A quoted text that is wholly such a date becomes the same ISO text, but only where the dialect
//   says so and a date column receives or is compared with it: a patient's or a user's free text
//   that looks like a date stays as it was typed.
// Nothing else inside quotes, quoted names or comments is touched, and a # date that is no day of
// the calendar is left for the product to refuse. An unknown product gets the statement as it is.
std::u16string Translate(std::u16string_view statement, const Dialect& dialect,
                         const IsDateColumn& isDateColumn);

}  // namespace odbc
