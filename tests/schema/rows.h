// Rows of a database as texts, for tests to compare.
#pragma once

#include <string>
#include <vector>

#include "platform/database.h"

namespace schema {

// SELECT `columns` FROM `rest`: a text a row, fields joined by "|", Null as "NULL", numbers and
// dates as a Swede writes them. The columns are separated by commas.
std::vector<std::u16string> Rows(platform::Connection& connection, const std::u16string& columns,
                                 const std::u16string& rest);

}  // namespace schema
