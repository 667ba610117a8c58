#include "windows/message_boxes.h"

#include <algorithm>
#include <iterator>
#include <vector>

#include "com/wide_text.h"
#include "com/win32.h"

namespace windows {
namespace {

constexpr std::u16string_view kDefaultTitle = u"Vilnor";

UINT IconStyle(platform::Icon icon) {
  switch (icon) {
    case platform::Icon::Critical:
      return MB_ICONERROR;
    case platform::Icon::Question:
      return MB_ICONQUESTION;
    case platform::Icon::Exclamation:
      return MB_ICONWARNING;
    default:
      return 0;
  }
}

BOOL CALLBACK AddVisible(HWND window, LPARAM windows) noexcept {
  try {
    if (IsWindowVisible(window) != FALSE) {
      reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    }
    return TRUE;
  } catch (...) {
    return FALSE;  // the box may be reporting exhausted memory
  }
}

// The thread's top-level windows that a person can see, topmost first.
std::vector<HWND> VisibleWindows() {
  std::vector<HWND> windows;
  EnumThreadWindows(GetCurrentThreadId(), AddVisible, reinterpret_cast<LPARAM>(&windows));
  return windows;
}

// The owner of a message box. While another program is in front, the thread has no active window. A
// box without an owner would then be hidden behind that program, with the host's windows disabled,
// and the host would look frozen.
HWND OwnerAmong(const std::vector<HWND>& windows) {
  const HWND active = GetActiveWindow();
  if (active != nullptr && IsWindowVisible(active) != FALSE) {
    return active;
  }
  return windows.empty() ? nullptr : GetLastActivePopup(GetAncestor(windows.front(), GA_ROOTOWNER));
}

// Disables the host's other windows while a box is open; the system disables only the owner.
class DisabledWindows {
 public:
  DisabledWindows(const std::vector<HWND>& windows, HWND owner) {
    std::copy_if(windows.begin(), windows.end(), std::back_inserter(disabled_),
                 [&](HWND window) { return window != owner && IsWindowEnabled(window) != FALSE; });
    Enable(FALSE);
  }
  DisabledWindows(const DisabledWindows&) = delete;
  DisabledWindows& operator=(const DisabledWindows&) = delete;
  ~DisabledWindows() { Enable(TRUE); }

 private:
  void Enable(BOOL enabled) const {
    for (const HWND window : disabled_) {
      EnableWindow(window, enabled);
    }
  }

  std::vector<HWND> disabled_;
};

// When the host's WM_QUIT interrupts a box, Wine returns IDOK, even for a question.
platform::Answer AnswerOf(int button, bool asks) {
  if (!asks) {
    return button == IDOK ? platform::Answer::Ok : platform::Answer::None;
  }
  if (button == IDYES) {
    return platform::Answer::Yes;
  }
  return button == IDNO ? platform::Answer::No : platform::Answer::None;
}

}  // namespace

std::uint32_t BoxStyle(const platform::MessageBox& box) {
  const UINT buttons = box.buttons == platform::Buttons::YesNo ? MB_YESNO : MB_OK;
  return IconStyle(box.icon) | buttons | MB_TASKMODAL | MB_SETFOREGROUND;
}

platform::Answer MessageBoxes::Show(const platform::MessageBox& box) {
  const std::wstring title = com::Wide(box.title.empty() ? kDefaultTitle : box.title);
  const std::vector<HWND> windows = VisibleWindows();
  const HWND owner = OwnerAmong(windows);
  const DisabledWindows others(windows, owner);
  return AnswerOf(MessageBoxW(owner, com::Wide(box.text).c_str(), title.c_str(), BoxStyle(box)),
                  box.buttons == platform::Buttons::YesNo);
}

}  // namespace windows
