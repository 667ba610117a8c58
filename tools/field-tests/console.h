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
// Stopped() is true. The same when the window is closed, the user logs off or Windows shuts down;
// then Closing() is true, too, and Windows ends this program after some seconds.
void CatchCtrlC();
bool Stopped();
bool Closing();

}  // namespace field_tests
