// The component's two classes.
#pragma once

#include <array>

#include "com/server.h"

namespace vilnor_dll {

const std::array<com::ClassEntry, 2>& Classes();

}  // namespace vilnor_dll
