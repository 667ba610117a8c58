#include "field-tests/core/missing_table.h"

#include <string>

#include "field-tests/core/text.h"

namespace field_tests {

bool SaysNoSuchTable(std::string_view table, std::int32_t number, std::string_view description) {
  // DB_E_NOTABLE: Jet, SQLOLEDB, and ODBC drivers with the SQLSTATE 42S02.
  constexpr auto kNoTable = static_cast<std::int32_t>(0x80040E37);
  const std::string text = Lower(description);
  // The drivers of SQLite and PostgreSQL have no SQLSTATE for it that ADO knows.
  const bool saysSo = number == kNoTable || text.find("no such table") != std::string::npos ||
                      (text.find("relation \"") != std::string::npos &&
                       text.find("\" does not exist") != std::string::npos);
  return saysSo && text.find(Lower(table)) != std::string::npos;
}

}  // namespace field_tests
