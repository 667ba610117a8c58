// A column of a result and the type that ADO's readers see for it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace odbc {

enum class ColumnKind {
  Boolean,
  Int16,
  Int32,
  BigInt,
  Single,
  Double,
  Decimal,
  Currency,
  Date,  // with or without a time of day
  Time,
  Text,
  Binary,
};

struct Column {
  std::u16string name;
  ColumnKind kind = ColumnKind::Text;
  // Characters of a text, digits of a number; 0 when the driver does not know.
  std::size_t size = 0;
  std::int16_t scale = 0;
  bool nullable = true;
};

// `typeName` is the data source's own name of the type. It goes before the ODBC type number where
// drivers blur it: PostgreSQL's boolean arrives as text and its money as a float, SQLite's numeric
// as a float and its decimal as text.
ColumnKind KindOf(std::int16_t sqlType, std::u16string_view typeName);

}  // namespace odbc
