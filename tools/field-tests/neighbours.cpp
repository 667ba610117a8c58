#include "field-tests/neighbours.h"

#include <string>

#include "com/wide_text.h"
#include "com/win32.h"
#include "exchange/envelope.h"
#include "field-tests/cannot_work.h"

namespace field_tests {

void RequireNoPracticeProgram() {
  // The window of a program that the field tests have just ended is still there for a moment.
  constexpr ULONGLONG kEnding = 3000;  // milliseconds
  const std::wstring name = com::Wide(std::u16string(exchange::kNotificationClass));
  const ULONGLONG end = GetTickCount64() + kEnding;
  while (FindWindowW(name.c_str(), nullptr) != nullptr) {
    if (GetTickCount64() > end) {
      throw CannotWork(
          "A practice program is running. Close it and Vilnor Link on this desktop first.");
    }
    Sleep(50);
  }
}

}  // namespace field_tests
