// Dates as the host's statements spell them: "mm-dd-yyyy" or "mm-dd-yyyy hh:mm:ss".
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace odbc {

// The same date as "yyyy-mm-dd" or "yyyy-mm-dd hh:mm:ss". nullopt for a text of any other form and
// for an invalid date.
std::optional<std::u16string> IsoFromHostDate(std::u16string_view text);

}  // namespace odbc
