#pragma once

#include <string>

#include "com/win32.h"

namespace diagnosis {

// False if another program keeps the clipboard, or there is no memory.
bool CopyToClipboard(HWND owner, const std::u16string& text);

}  // namespace diagnosis
