// The table and column that a quoted text of a statement is written to or compared with.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include "odbc/sql_tokens.h"

namespace odbc {

// Names as the statement spells them, quotes included.
struct Target {
  std::u16string_view table;
  std::u16string_view column;
};

// The target of the text token at `position`, in the two places where it is clear: as one whole
// value of INSERT INTO table (columns) VALUES (values), and after `column =` or another comparison
// in a statement's first table. nullopt anywhere else (an expression, a function's argument, a
// value without a column list).
std::optional<Target> TargetOf(const std::vector<Token>& tokens, std::size_t position);

}  // namespace odbc
