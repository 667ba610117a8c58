// This test program acting as the program that is started: it records its command line and, on a
// second line, the window that its starter requested ("show 1"), and ends.
#pragma once

#include <filesystem>
#include <string>

namespace system_tests {

// The argument that makes it write this to `file`; always the last one.
std::wstring NoteTo(const std::filesystem::path& file);
// An earlier argument makes it wait for the named event first. Without the event in time it records
// nothing.
std::wstring WaitFor(const std::wstring& event);

// Whether this process was started with that argument and has done so.
bool RanAsNotingProgram();

}  // namespace system_tests
