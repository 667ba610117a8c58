#include "system/com/box_answerer.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <mutex>
#include <utility>

#include "fakes/noted_boxes.h"

namespace system_tests {
namespace {

// Sends no message: the window's thread may be waiting for the answerer to end, or for its lock,
// and would never answer.
std::wstring TextOf(HWND window) {
  std::array<wchar_t, 2048> text{};
  InternalGetWindowText(window, text.data(), static_cast<int>(text.size()));
  return text.data();
}

// The text is in the only static control of the box that has text.
std::wstring BoxText(HWND box) {
  HWND control = nullptr;
  while ((control = FindWindowExW(box, control, L"Static", nullptr)) != nullptr) {
    if (std::wstring text = TextOf(control); !text.empty()) {
      return text;
    }
  }
  return {};
}

// From the only static control of the box that holds an icon.
HICON BoxIcon(HWND box) {
  HWND control = nullptr;
  while ((control = FindWindowExW(box, control, L"Static", nullptr)) != nullptr) {
    if ((GetWindowLongW(control, GWL_STYLE) & SS_TYPEMASK) == SS_ICON) {
      constexpr UINT kPatience = 2'000;
      DWORD_PTR icon = 0;
      SendMessageTimeoutW(control, STM_GETICON, 0, 0, SMTO_NORMAL, kPatience, &icon);
      return reinterpret_cast<HICON>(icon);
    }
  }
  return nullptr;
}

platform::Icon IconOf(HICON icon) {
  using enum platform::Icon;
  for (const auto& [systemIcon, name] :
       {std::pair{IDI_ERROR, Critical}, std::pair{IDI_QUESTION, Question},
        std::pair{IDI_WARNING, Exclamation}}) {
    if (icon != nullptr && icon == LoadIconW(nullptr, systemIcon)) {
      return name;
    }
  }
  return None;
}

void Note(const ShownBox& box) {
  fakes::NoteBox({.text = std::u16string(box.text.begin(), box.text.end()),
                  .title = std::u16string(box.title.begin(), box.title.end()),
                  .icon = IconOf(box.icon)});
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
    HWND box = nullptr;
    while ((box = FindWindowExW(nullptr, box, L"#32770", nullptr)) != nullptr) {
      if (IsMine(box)) {
        Answer(box);
        ending_ = ending_ || which_ == Boxes::FirstOfThisProcess;
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
  Note(shown);
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
