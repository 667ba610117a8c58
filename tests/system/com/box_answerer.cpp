#include "system/com/box_answerer.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <mutex>
#include <string_view>

namespace system_tests {
namespace {

// Without a message: the window's thread may be waiting for the answerer's end, or for its lock,
// and would never answer.
std::wstring TextOf(HWND window) {
  std::array<wchar_t, 2048> text{};
  InternalGetWindowText(window, text.data(), static_cast<int>(text.size()));
  return text.data();
}

struct Class {
  std::wstring_view name;
  std::vector<HWND> windows;
};

BOOL CALLBACK AddIfOfClass(HWND window, LPARAM wanted) {
  auto& each = *reinterpret_cast<Class*>(wanted);
  std::array<wchar_t, 16> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  if (std::wstring_view(name.data()) == each.name) {
    each.windows.push_back(window);
  }
  return TRUE;
}

// All at once: the server of the next Debian's Wine hangs when FindWindowEx asks it for the sibling
// of a window that is being destroyed.
std::vector<HWND> Dialogs() {
  Class dialogs{.name = L"#32770", .windows = {}};
  EnumWindows(AddIfOfClass, reinterpret_cast<LPARAM>(&dialogs));
  return dialogs.windows;
}

std::vector<HWND> Statics(HWND box) {
  Class statics{.name = L"Static", .windows = {}};
  EnumChildWindows(box, AddIfOfClass, reinterpret_cast<LPARAM>(&statics));
  return statics.windows;
}

// The text stands in the box's one static control that has any.
std::wstring BoxText(HWND box) {
  for (const HWND control : Statics(box)) {
    if (std::wstring text = TextOf(control); !text.empty()) {
      return text;
    }
  }
  return {};
}

// Of the box's one static control that holds an icon.
HICON BoxIcon(HWND box) {
  for (const HWND control : Statics(box)) {
    if ((GetWindowLongW(control, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
      constexpr UINT kPatience = 2'000;
      DWORD_PTR icon = 0;
      SendMessageTimeoutW(control, STM_GETICON, 0, 0, SMTO_NORMAL, kPatience, &icon);
      return reinterpret_cast<HICON>(icon);
    }
  }
  return nullptr;
}

int DefaultButton(HWND box) {
  for (const int button : {IDOK, IDYES, IDNO}) {
    const HWND control = GetDlgItem(box, button);
    if (control != nullptr &&
        (GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK) == BS_DEFPUSHBUTTON) {
      return button;
    }
  }
  return 0;
}

}  // namespace

BoxAnswerer::~BoxAnswerer() {
  ending_ = true;
}

std::vector<ShownBox> BoxAnswerer::Shown() const {
  const std::lock_guard lock(mutex_);
  return shown_;
}

std::vector<std::wstring> BoxAnswerer::Texts() const {
  const auto shown = Shown();
  std::vector<std::wstring> texts;
  std::transform(shown.begin(), shown.end(), std::back_inserter(texts),
                 [](const auto& box) { return box.text; });
  return texts;
}

void BoxAnswerer::Watch() {
  while (!ending_) {
    for (const HWND box : Dialogs()) {
      if (IsMine(box)) {
        Answer(box);
      }
    }
    Sleep(5);
  }
}

bool BoxAnswerer::IsMine(HWND box) const {
  DWORD process = 0;
  GetWindowThreadProcessId(box, &process);
  return IsWindowVisible(box) != FALSE &&
         (which_ == Boxes::OfEveryProcess || process == GetCurrentProcessId());
}

void BoxAnswerer::Answer(HWND box) {
  ShownBox shown{.title = TextOf(box),
                 .text = BoxText(box),
                 .icon = BoxIcon(box),
                 .owner = GetWindow(box, GW_OWNER),
                 .defaultButton = DefaultButton(box)};
  {
    const std::lock_guard lock(mutex_);
    shown_.push_back(std::move(shown));
  }
  if (atBox_) {
    atBox_();
  }
  PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(answer_), 0);
  while (IsWindow(box) != FALSE && !ending_) {
    Sleep(1);
  }
}

}  // namespace system_tests
