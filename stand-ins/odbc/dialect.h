// What the host's statements need changed for the product that they are sent to. The host writes
// them for a product that knows `@@Identity` and reads month-first dates; every other word of a
// statement is left as it is.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "odbc/sql_tokens.h"
#include "odbc/text_calls.h"

namespace odbc {

struct Dialect {
  // As the driver names its product (SQL_DBMS_NAME); the driver's own name has it too.
  std::u16string_view product;
  // Stands for `@@Identity`: the key that the last insert on this connection made. Empty: the
  // product knows `@@Identity` itself.
  std::u16string_view identity;
  // The product keeps a date as the text that it is given, so that a quoted month-first date must
  // become ISO text where a date column receives it. Products that convert read it themselves,
  // once their session is set up.
  bool keepsDateText = false;
  // Run once after connecting, empty for none: what makes quoted month-first dates read right
  // whatever the server's, the database's or the user's settings say.
  std::u16string_view sessionSetup;
  SqlSyntax syntax;
  // The form of text that the product's driver takes itself.
  TextCalls textCalls = TextCalls::Wide;
  // How many milliseconds a lock held by another process is waited for when the connection string
  // does not say, empty for what the driver does.
  std::u16string_view lockTimeout;
};

// The product's entry; one that changes nothing for a product that the table does not know.
const Dialect& DialectOf(std::u16string_view product);

// The same by the driver that a connection string names ("SQLite3", "PostgreSQL Unicode", a file).
const Dialect& DialectOfDriver(std::u16string_view driver);

// Whether a column, both names spelt as in the statement, is declared as a date or timestamp.
using IsDateColumn = std::function<bool(std::u16string_view table, std::u16string_view column)>;

// The statement for the dialect's product:
// - `@@Identity`, in any case, becomes the dialect's expression.
// - #mm-dd-yyyy# and #mm-dd-yyyy hh:mm:ss# become 'yyyy-mm-dd' and 'yyyy-mm-dd hh:mm:ss', which
//   every product reads alike.
// - A quoted text that is wholly such a date becomes the same ISO text, but only where the product
//   keeps date texts and a date column receives or is compared with it: a patient's or a user's
//   free text that looks like a date stays as it was typed.
// Nothing else inside quotes, quoted names or comments is touched, and a # date that is no day of
// the calendar is left for the product to refuse.
std::u16string Translate(std::u16string_view statement, const Dialect& dialect,
                         const IsDateColumn& isDateColumn);

}  // namespace odbc
