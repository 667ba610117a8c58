// Maps Windows paths to the native build's file system.
#pragma once

#include <filesystem>
#include <string>

namespace native {

// The component joins its paths with "\"; here "\" and "/" are both separators.
std::filesystem::path NativePath(const std::u16string& path);

}  // namespace native
