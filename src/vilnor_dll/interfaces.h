// The component's automation interfaces, as the type library's compiler describes them to C++.
#pragma once

#include "com/win32.h"
// Needs win32.h in front of it.
#include "typelib/Vilnor.h"
