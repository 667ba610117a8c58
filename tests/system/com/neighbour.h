// Another program part of the host that was built by the same compiler and brings its shared
// unwinder along.
#pragma once

#include <string>

#include "com/win32.h"

namespace system_tests {

std::wstring NeighbourPath();
inline constexpr const wchar_t* kNeighbour = L"libgcc_s_dw2-1.dll";

}  // namespace system_tests
