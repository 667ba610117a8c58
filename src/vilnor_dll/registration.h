// The registry entries that regsvr32 makes for the component.
#pragma once

#include <string>
#include <vector>

#include "com/server_registration.h"

namespace vilnor_dll {

// The type library and both classes, with the DLL's path.
std::vector<com::RegisteredPart> Registration(const std::wstring& modulePath);

}  // namespace vilnor_dll
