// A query's complete result, independent of its statement and connection.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "automation/value.h"
#include "odbc/column.h"

namespace odbc {

using Row = std::vector<automation::Value>;

struct CachedRows {
  std::vector<Column> columns;
  std::vector<Row> rows;

  // The first column of that name, ignoring letter case.
  std::optional<std::size_t> Find(std::u16string_view name) const;
};

}  // namespace odbc
