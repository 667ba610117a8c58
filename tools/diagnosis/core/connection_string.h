// Keeps what a connection string contains out of a report.
#pragma once

#include <string>

namespace diagnosis {

// `text` with "***" in place of every value of the connection string, which may be a password, a
// user's name or a server's, in whatever letter case. A provider's message may repeat them.
std::u16string WithoutValuesOf(const std::u16string& connection, const std::u16string& text);

}  // namespace diagnosis
