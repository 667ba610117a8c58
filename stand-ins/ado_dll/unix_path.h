// Windows paths in a connection string, for drivers that run on the Unix side of Wine.
#pragma once

#include <string>
#include <string_view>

namespace ado_dll {

// Returns the string with the value of Database as a Unix path, if it is an absolute Windows path
// ("Z:\clinic\host.db") in an existing folder and the system is Wine. Otherwise returns the string
// unchanged.
std::u16string WithUnixPath(std::u16string_view connectionString);

}  // namespace ado_dll
