// What the host's statements, connections and results need of the product that they meet: one row a
// product, which holds all in which that product and its ODBC driver differ. It is chosen once,
// when a connection is opened.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "odbc/ado_error.h"
#include "odbc/column.h"
#include "odbc/column_value.h"
#include "odbc/sql_tokens.h"
#include "odbc/text_calls.h"

namespace odbc {

// A key of connection strings and the value that it has when the host's string does not say.
struct ConnectionDefault {
  std::u16string_view key;
  std::u16string_view value;
};

// A failure as the product's driver reports it, and ADO's error for it.
struct ErrorCode {
  // What its SQLSTATE begins with; empty for any.
  std::u16string_view state;
  // The product's own code; nothing for any.
  std::optional<std::int32_t> native;
  ProviderError error;
};

struct Dialect {
  // As the driver names its product (SQL_DBMS_NAME); the driver's own name has it too.
  std::u16string_view product;

  // The form of text that the driver takes itself.
  TextCalls textCalls = TextCalls::Wide;
  std::span<const ConnectionDefault> connectionDefaults;
  // Run once after connecting, in this order: what makes the host's statements mean the same
  // whatever the server's, the database's or the user's settings say.
  std::span<const std::u16string_view> sessionSetup;

  // What a statement may have beyond '…' texts, "…" names and comments.
  SqlSyntax syntax;
  // Stands for `@@Identity`: the key that the last insert on this connection made. Empty: the
  // product knows `@@Identity` itself.
  std::u16string_view identity;
  // The product does not read a quoted month-first date, so it must become ISO text where a date
  // column receives it or is compared with it.
  bool quotedDatesAreTranslated = false;

  // Types that the driver describes otherwise than ADO's readers see them.
  std::span<const NamedKind> types;
  // The driver writes a single with six digits, so it is read as a number.
  bool singlesAreReadAsNumbers = false;
  // Texts that the driver hands over in a form of its own; null for none.
  OwnReading ownReading = nullptr;

  // Failures whose SQLSTATE is the product's own or says too little. The first entry that fits
  // decides, before the standard's states do.
  std::span<const ErrorCode> errors;
};

// Changes nothing.
inline constexpr Dialect kUnknownProduct{};

// The row whose product is named in `name`: a driver as a connection string names it ("SQLite3",
// "PostgreSQL Unicode", a file), or SQL_DBMS_NAME. kUnknownProduct when there is none.
const Dialect& DialectOf(std::u16string_view name);

inline bool IsKnown(const Dialect& dialect) {
  return !dialect.product.empty();
}

}  // namespace odbc
