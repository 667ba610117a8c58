// What regsvr32 enters into the registry for the component.
#pragma once

#include <string>
#include <vector>

#include "windows/server_registration.h"

namespace com {

// The type library and both classes, with the DLL's path.
std::vector<windows::RegisteredPart> Registration(const std::wstring& modulePath);

}  // namespace com
