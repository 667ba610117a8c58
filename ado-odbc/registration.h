// The registry entries by which ADO's class and program identifiers lead to this DLL.
#pragma once

#include <string>

#include "windows/win32.h"

namespace ado_odbc {

// Both give the system's error code of the first entry that fails, as an HRESULT. A registration
// that fails in the middle is taken back.
HRESULT Register(const std::wstring& modulePath);
// Removes every key that Register() makes, whoever made it.
HRESULT Unregister();

}  // namespace ado_odbc
