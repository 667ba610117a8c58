#include "diagnosis/windows/console.h"

#include <array>

#include "automation/text.h"
#include "com/wide_text.h"
#include "com/win32.h"

namespace diagnosis {
namespace {

bool IsConsole(HANDLE stream) {
  DWORD mode = 0;
  return GetConsoleMode(stream, &mode) != FALSE;
}

bool Write(DWORD which, std::u16string_view text) {
  HANDLE stream = GetStdHandle(which);
  DWORD written = 0;
  if (IsConsole(stream)) {
    const std::wstring wide = com::Wide(text);
    return WriteConsoleW(stream, wide.c_str(), static_cast<DWORD>(wide.size()), &written,
                         nullptr) != FALSE;
  }
  const std::string bytes = automation::ToUtf8(text);
  return WriteFile(stream, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) !=
             FALSE &&
         written == bytes.size();
}

std::u16string FirstLine(const std::u16string& text) {
  return text.substr(0, text.find_first_of(u"\r\n"));
}

constexpr std::size_t kLongestLine = 4096;

// While it lives, what is typed stays invisible. The console outlives this program, so Ctrl+C must
// restore it, too.
class NoEcho {
 public:
  explicit NoEcho(HANDLE keyboard) {
    keyboard_ = keyboard;
    GetConsoleMode(keyboard_, &mode_);
    SetConsoleCtrlHandler(Restore, TRUE);
    SetConsoleMode(keyboard_, (mode_ | ENABLE_LINE_INPUT) & ~static_cast<DWORD>(ENABLE_ECHO_INPUT));
  }
  NoEcho(const NoEcho&) = delete;
  NoEcho& operator=(const NoEcho&) = delete;
  ~NoEcho() {
    Restore(0);
    SetConsoleCtrlHandler(Restore, FALSE);
  }

 private:
  // FALSE: the next handler ends the program.
  static BOOL WINAPI Restore(DWORD /*event*/) {
    SetConsoleMode(keyboard_, mode_);
    return FALSE;
  }

  static inline HANDLE keyboard_ = nullptr;
  static inline DWORD mode_ = 0;
};

std::u16string TypedLine(HANDLE keyboard) {
  std::array<wchar_t, kLongestLine> line{};
  DWORD length = 0;
  {
    const NoEcho unseen(keyboard);
    ReadConsoleW(keyboard, line.data(), static_cast<DWORD>(line.size()), &length, nullptr);
  }
  PrintError(u"\r\n");
  return com::FromWide({line.data(), length});
}

std::u16string PipedLine(HANDLE pipe) {
  std::string bytes;
  char byte = 0;
  DWORD read = 0;
  while (bytes.size() < kLongestLine && ReadFile(pipe, &byte, 1, &read, nullptr) != FALSE &&
         read == 1 && byte != '\n') {
    bytes += byte;
  }
  return automation::FromUtf8(bytes);
}

}  // namespace

bool Print(std::u16string_view text) {
  return Write(STD_OUTPUT_HANDLE, text);
}

void PrintError(std::u16string_view text) {
  Write(STD_ERROR_HANDLE, text);
}

std::u16string AskFor(std::u16string_view question) {
  PrintError(question);
  HANDLE input = GetStdHandle(STD_INPUT_HANDLE);
  return FirstLine(IsConsole(input) ? TypedLine(input) : PipedLine(input));
}

}  // namespace diagnosis
