#include "odbc/cached_rows.h"

#include <algorithm>

#include "automation/text.h"

namespace odbc {

std::optional<std::size_t> CachedRows::Find(std::u16string_view name) const {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const Column& column) {
    return automation::EqualsNoCase(column.name, name);
  });
  if (found == columns.end()) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(found - columns.begin());
}

}  // namespace odbc
