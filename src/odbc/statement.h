// One statement run on a connection, its result read whole.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "odbc/cached_rows.h"
#include "odbc/handle.h"

namespace odbc {

// A statement that runs longer fails with -2147217871; ADO's default CommandTimeout. Drivers that
// know no limit (SQLite) ignore it.
inline constexpr std::size_t kStatementTimeoutSeconds = 30;

class Statement {
 public:
  Statement(const ConnectionHandle& connection, const Dialect& dialect);

  // Raises the driver's error.
  void Execute(std::u16string_view text);
  // Of the executed statement; empty when it has no rows.
  std::vector<Column> Columns() const;
  // Reads the rows that are left. Text is read in pieces, however long it is.
  CachedRows FetchAll();
  // Rows that the statement changed, -1 when the driver does not say.
  std::int64_t AffectedRows() const;

 private:
  Column Describe(SQLUSMALLINT number) const;
  std::u16string TypeName(SQLUSMALLINT number) const;
  bool Fetch();
  // Nothing for Null.
  std::optional<std::u16string> ReadText(SQLUSMALLINT number);
  automation::Value ReadSingle(SQLUSMALLINT number);
  automation::Value Read(SQLUSMALLINT number, ColumnKind kind);

  void Check(SQLRETURN result) const { handle_.Check(result, dialect_); }

  StatementHandle handle_;
  const Dialect& dialect_;
};

}  // namespace odbc
