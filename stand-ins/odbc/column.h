// A result column and the type that ADO's readers see for it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
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

// A column's type as the driver describes it.
struct DriverType {
  // ODBC's number.
  std::int16_t number = 0;
  // The data source's own name.
  std::u16string_view name;
  std::size_t size = 0;
  std::int16_t scale = 0;
};

struct NamedKind {
  std::u16string_view typeName;
  ColumnKind kind;
  // nullopt matches any.
  std::optional<std::size_t> size = std::nullopt;
  std::optional<std::int16_t> scale = std::nullopt;
};

// By `own`, the product's own names, then by names that mean the same in every product, then by
// number. Names come first where drivers blur the type: PostgreSQL's boolean arrives as text and
// its money as a float, SQLite's numeric as a float and its decimal as text.
ColumnKind KindOf(const DriverType& type, std::span<const NamedKind> own);

}  // namespace odbc
