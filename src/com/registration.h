// What regsvr32 enters into the registry, for every user of the machine, and takes out again.
#pragma once

#include "windows/win32.h"

namespace com {

// The type library and both classes, pointing at this DLL. After a failure nothing is left behind.
// SELFREG_E_TYPELIB, SELFREG_E_CLASS, or the system's code.
HRESULT Register();

// Everything that Register() entered; what is missing already is no error.
HRESULT Unregister();

}  // namespace com
