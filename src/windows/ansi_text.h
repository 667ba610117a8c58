// Converts text to and from the system's ANSI code page, for the ANSI forms of system calls. A
// character that the code page lacks becomes the system's replacement ("?").
#pragma once

#include <string>
#include <string_view>

namespace windows {

std::string Ansi(std::u16string_view text);
std::u16string FromAnsi(std::string_view text);

}  // namespace windows
