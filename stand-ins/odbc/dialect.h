// How database products and their ODBC drivers differ for the host's statements, connections and
// results: one row per product, which holds all differences. The row is chosen once, when a
// connection is opened.
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

// A connection string key and its value if the host's string does not set it.
struct ConnectionDefault {
  std::u16string_view key;
  std::u16string_view value;
};

// A failure as the product's driver reports it, and ADO's error for it.
struct ErrorCode {
  // The beginning of its SQLSTATE; empty matches any.
  std::u16string_view state;
  // The product's own code; nullopt matches any.
  std::optional<std::int32_t> native;
  ProviderError error;
};

struct Dialect {
  // The name that the driver reports (SQL_DBMS_NAME); the driver's own name contains it, too.
  std::u16string_view product;

  // The form of text that the driver itself takes.
  TextCalls textCalls = TextCalls::Wide;
  std::span<const ConnectionDefault> connectionDefaults;
  // Run once after connecting, in this order, so that the host's statements mean the same whatever
  // the server's, the database's or the user's settings are.
  std::span<const std::u16string_view> sessionSetup;

  // What statements may contain beyond '…' texts, "…" names and comments.
  SqlSyntax syntax;
  // Replaces `@@Identity`: the key that the last insert on this connection generated. Empty if the
  // product knows `@@Identity` itself.
  std::u16string_view identity;
  // The product does not read quoted month-first dates, so they must become ISO text where a date
  // column receives them or is compared with them.
  bool quotedDatesAreTranslated = false;

  // Types that the driver describes differently from what ADO's readers see.
  std::span<const NamedKind> types;
  // The driver writes a single with six digits, so it is read as a number.
  bool singlesAreReadAsNumbers = false;
  // Reads texts that the driver returns in its own form; null if there are none.
  OwnReading ownReading = nullptr;

  // Failures whose SQLSTATE is the product's own or too vague. The first matching entry decides,
  // before the standard SQLSTATEs.
  std::span<const ErrorCode> errors;
};

// Changes nothing.
inline constexpr Dialect kUnknownProduct{};

// The row whose product is named in `name`: a driver as a connection string names it ("SQLite3",
// "PostgreSQL Unicode", a file), or SQL_DBMS_NAME. kUnknownProduct if there is none.
const Dialect& DialectOf(std::u16string_view name);

inline bool IsKnown(const Dialect& dialect) {
  return !dialect.product.empty();
}

}  // namespace odbc
