// The window in which run.cmd was started; or the file or pipe in its place, which is UTF-8.
#pragma once

#include <string>

namespace field_tests {

void Print(const std::string& text);
void PrintLine(const std::string& text);

// The next line typed; "" at the end of the input.
std::string ReadLine();

// Keeps a window open that would close with this program. Does nothing without a window.
void WaitForEnter();

// From now on Ctrl+C does not end this program: it ends the program that is running for it, and
// Stopped() is true.
void CatchCtrlC();
bool Stopped();

}  // namespace field_tests
