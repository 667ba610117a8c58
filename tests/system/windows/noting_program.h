// This test program in the part of a program that is started: it notes its command line and ends.
#pragma once

#include <filesystem>
#include <string>

namespace system_tests {

// The argument that makes it note its command line in `file`.
std::wstring NoteTo(const std::filesystem::path& file);

// Whether this process was started with that argument, and has done so.
bool RanAsNotingProgram();

}  // namespace system_tests
