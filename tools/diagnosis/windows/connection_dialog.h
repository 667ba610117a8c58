#pragma once

#include <optional>
#include <string>

#include "com/win32.h"

namespace diagnosis {

// Asks for the connection string, whose letters stay invisible; nothing if the user cancels.
std::optional<std::u16string> AskForConnection(HWND owner);

}  // namespace diagnosis
