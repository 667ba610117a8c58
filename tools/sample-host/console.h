// Lines on standard output, UTF-8. Each is flushed at once, so that a program reading them sees it
// immediately.
#pragma once

#include <string>
#include <string_view>

namespace sample_host {

void Print(std::u16string_view line);
void PrintError(std::u16string_view line);

// The text in double quotes, with line breaks and quotes escaped as \r, \n, \".
std::u16string Quoted(std::u16string_view text);

}  // namespace sample_host
