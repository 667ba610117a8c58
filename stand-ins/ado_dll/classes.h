// The DLL's classes, under ADO's own identifiers.
#pragma once

#include <array>

#include "com/server.h"

namespace ado_dll {

const std::array<com::ClassEntry, 2>& Classes();

}  // namespace ado_dll
