// The host's database, as statements.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace schema {

// By product ("sqlite", "postgresql", "mariadb", "access", "sqlserver"): what makes the tables anew
// and fills them, in UTF-8.
const std::map<std::string, std::vector<std::string>>& HostSchemas();

}  // namespace schema
