// One statement run on a connection, with its complete result.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/cached_rows.h"
#include "odbc/handle.h"

namespace odbc {

// ADO's default CommandTimeout: a statement that runs longer fails with -2147217871. Drivers
// without a timeout (SQLite) ignore it.
inline constexpr std::size_t kStatementTimeoutSeconds = 30;

class Statement {
 public:
  Statement(const ConnectionHandle& connection, const Dialect& dialect);

  // Raises the driver's error.
  void Execute(std::u16string_view text);
  // The executed statement's columns; empty if it does not return rows.
  std::vector<Column> Columns() const;
  // Reads the remaining rows. Text is read in pieces, however long it is.
  CachedRows FetchAll();
  // Rows that the statement changed, -1 when the driver does not say.
  std::int64_t AffectedRows() const;

 private:
  Column Describe(SQLUSMALLINT number) const;
  std::u16string TypeName(SQLUSMALLINT number) const;
  bool Fetch();
  // nullopt for Null.
  std::optional<std::u16string> ReadText(SQLUSMALLINT number);
  automation::Value ReadSingle(SQLUSMALLINT number);
  automation::Value Read(SQLUSMALLINT number, ColumnKind kind);

  void Check(SQLRETURN result) const { handle_.Check(result, dialect_); }

  StatementHandle handle_;
  const Dialect& dialect_;
};

}  // namespace odbc
