// The registry entries by which ADO's class and program identifiers lead to this DLL.
#pragma once

#include <string>
#include <vector>

#include "windows/server_registration.h"

namespace ado_odbc {

std::vector<windows::RegisteredPart> Registration(const std::wstring& modulePath);

}  // namespace ado_odbc
