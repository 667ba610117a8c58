#include "console.h"

#include "automation/text.h"
#include "com/win32.h"

namespace sample_host {
namespace {

void WriteLine(DWORD stream, std::u16string_view line) {
  const std::string bytes = automation::ToUtf8(line) + "\r\n";
  DWORD written = 0;
  WriteFile(GetStdHandle(stream), bytes.data(), static_cast<DWORD>(bytes.size()), &written,
            nullptr);
}

}  // namespace

void Print(std::u16string_view line) {
  WriteLine(STD_OUTPUT_HANDLE, line);
}

void PrintError(std::u16string_view line) {
  WriteLine(STD_ERROR_HANDLE, line);
}

std::u16string Quoted(std::u16string_view text) {
  std::u16string quoted = u"\"";
  for (const char16_t letter : text) {
    switch (letter) {
      case u'\r':
        quoted += u"\\r";
        break;
      case u'\n':
        quoted += u"\\n";
        break;
      case u'"':
        quoted += u"\\\"";
        break;
      default:
        quoted += letter;
    }
  }
  return quoted + u"\"";
}

}  // namespace sample_host
