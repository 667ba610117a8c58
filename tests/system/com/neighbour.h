// Another part of the host's program, built by the same compiler, that brings its shared unwinder.
#pragma once

#include <string>

#include "com/win32.h"

namespace system_tests {

std::wstring NeighbourPath();
inline constexpr const wchar_t* kNeighbour = L"libgcc_s_dw2-1.dll";

}  // namespace system_tests
