// The host's database of tests/schema/, as statements.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace databases {

// By product ("sqlite", "postgresql"): what makes the tables anew and fills them, in UTF-8.
const std::map<std::string, std::vector<std::string>>& HostSchemas();

}  // namespace databases
