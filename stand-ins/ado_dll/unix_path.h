// Windows paths in a connection string, for drivers that run on the Unix side of Wine.
#pragma once

#include <string>
#include <string_view>

namespace ado_dll {

// The string with the value of Database as a Unix path, when it is an absolute Windows path
// ("Z:\clinic\host.db") of a folder that exists and the system is Wine; as it was otherwise.
std::u16string WithUnixPath(std::u16string_view connectionString);

}  // namespace ado_dll
