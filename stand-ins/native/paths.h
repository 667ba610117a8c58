// Windows paths on the native build's file system.
#pragma once

#include <filesystem>
#include <string>

namespace native {

// The component joins its paths with "\"; here that is a separator like "/".
std::filesystem::path NativePath(const std::u16string& path);

}  // namespace native
