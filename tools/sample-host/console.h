// Lines on standard output, UTF-8, each written at once, so that a program that reads along sees it
// when it happens.
#pragma once

#include <string>
#include <string_view>

namespace sample_host {

void Print(std::u16string_view line);
void PrintError(std::u16string_view line);

// The text between double quotes, line breaks and quotes in it escaped as \r, \n, \".
std::u16string Quoted(std::u16string_view text);

}  // namespace sample_host
