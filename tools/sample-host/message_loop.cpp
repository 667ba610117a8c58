#include "message_loop.h"

#include <array>
#include <string_view>

namespace sample_host {
namespace {

bool IsOfNotificationWindow(HWND window) {
  std::array<wchar_t, 64> name{};
  const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return std::wstring_view(name.data(), static_cast<std::size_t>(length)) == L"KestraToVilnor";
}

bool IsAnswer(const MSG& message, const AwaitedAnswer& answer) {
  return message.message == answer.message && IsOfNotificationWindow(message.hwnd) &&
         message.wParam == answer.key.value_or(message.wParam);
}

}  // namespace

bool RunUntilAnswered(const AwaitedAnswer& answer, std::chrono::seconds bound) {
  const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(bound.count()) * 1000;
  for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64()) {
    MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(end - now), QS_ALLINPUT);
    MSG message{};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
      const bool answered = IsAnswer(message, answer);
      TranslateMessage(&message);
      DispatchMessageW(&message);
      if (answered) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace sample_host
