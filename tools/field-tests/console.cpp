#include "field-tests/console.h"

#include <array>
#include <atomic>

#include "com/win32.h"
#include "field-tests/wide.h"

namespace field_tests {
namespace {

std::atomic<bool> stopped = false;
std::atomic<bool> closing = false;

BOOL WINAPI Stop(DWORD event) {
  stopped = true;
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) {
    closing = true;
    // Windows would end the program as soon as this returns. The main thread puts back and ends.
    Sleep(INFINITE);
  }
  return TRUE;
}

}  // namespace

void Print(const std::string& text) {
  const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  DWORD written = 0;
  if (GetConsoleMode(output, &mode) != FALSE) {
    const std::wstring wide = WideOf(text);
    WriteConsoleW(output, wide.data(), static_cast<DWORD>(wide.size()), &written, nullptr);
  } else {
    WriteFile(output, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
  }
}

void PrintLine(const std::string& text) {
  Print(text + "\r\n");
}

std::string ReadLine() {
  const HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  DWORD mode = 0;
  DWORD length = 0;
  if (GetConsoleMode(input, &mode) != FALSE) {
    std::array<wchar_t, 4096> line{};
    ReadConsoleW(input, line.data(), line.size(), &length, nullptr);
    const std::wstring text(line.data(), length);
    return Utf8(text.substr(0, text.find_first_of(L"\r\n")));
  }
  std::string text;
  for (char letter = 0;
       ReadFile(input, &letter, 1, &length, nullptr) != FALSE && length == 1 && letter != '\n';) {
    text += letter;
  }
  return text.substr(0, text.find('\r'));
}

void WaitForEnter() {
  DWORD mode = 0;
  if (!closing && GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != FALSE) {
    Print("Press Enter to end.");
    ReadLine();
  }
}

void CatchCtrlC() {
  SetConsoleCtrlHandler(&Stop, TRUE);
}

bool Stopped() {
  return stopped;
}

bool Closing() {
  return closing;
}

}  // namespace field_tests
