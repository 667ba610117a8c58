// The host's tables and columns that the component reads or writes; a test compares them with the
// sample schema.
#pragma once

#include <array>
#include <span>
#include <string_view>

namespace diagnosis {

struct HostTable {
  std::u16string_view name;
  std::span<const std::u16string_view> columns;
};

const std::array<HostTable, 9>& HostTables();

}  // namespace diagnosis
