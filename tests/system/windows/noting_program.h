// This test program in the part of a program that is started: it notes its command line and, on a
// line of its own, the window that its starter asked for ("show 1"), and ends.
#pragma once

#include <filesystem>
#include <string>

namespace system_tests {

// The argument that makes it do so in `file`; the last of its arguments.
std::wstring NoteTo(const std::filesystem::path& file);
// The argument in front that makes it wait before for the named event; without the event in good
// time it notes nothing.
std::wstring WaitFor(const std::wstring& event);

// Whether this process was started with that argument, and has done so.
bool RanAsNotingProgram();

}  // namespace system_tests
