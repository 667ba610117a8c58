// The registry entries that map ADO's class and program identifiers to this DLL.
#pragma once

#include <string>
#include <vector>

#include "com/server_registration.h"

namespace ado_dll {

std::vector<com::RegisteredPart> Registration(const std::wstring& modulePath);

}  // namespace ado_dll
