// A database's error for a table that is not there.
#pragma once

#include <cstdint>
#include <string_view>

namespace field_tests {

// Whether ADO's error of a select says that this table is missing. Every other error leaves that
// open: the database may be busy, the user may not read the table, it may be a view on another one.
bool SaysNoSuchTable(std::string_view table, std::int32_t number, std::string_view description);

}  // namespace field_tests
