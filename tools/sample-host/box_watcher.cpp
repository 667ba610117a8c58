#include "box_watcher.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "com/wide_text.h"
#include "console.h"

namespace sample_host {
namespace {

constexpr DWORD kLook = 50;  // milliseconds between two looks

// Sends no message: a thread that has closed its boxes and waits for the watcher would never
// answer.
std::u16string WindowText(HWND window) {
  std::array<wchar_t, 4096> text{};
  const int length = InternalGetWindowText(window, text.data(), static_cast<int>(text.size()));
  return com::FromWide({text.data(), static_cast<std::size_t>(length)});
}

bool IsOfClass(HWND window, std::wstring_view name) {
  std::array<wchar_t, 64> text{};
  const int length = GetClassNameW(window, text.data(), static_cast<int>(text.size()));
  return std::wstring_view(text.data(), static_cast<std::size_t>(length)) == name;
}

BOOL CALLBACK AddWhenBox(HWND window, LPARAM boxes) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == GetCurrentProcessId() && IsOfClass(window, L"#32770") &&
      IsWindowVisible(window) != FALSE) {
    reinterpret_cast<std::vector<HWND>*>(boxes)->push_back(window);
  }
  return TRUE;
}

std::vector<HWND> OpenBoxes() {
  std::vector<HWND> boxes;
  EnumWindows(AddWhenBox, reinterpret_cast<LPARAM>(&boxes));
  return boxes;
}

// The text of the box is that of its only static control with text.
BOOL CALLBACK TakeStaticText(HWND control, LPARAM text) {
  if (IsOfClass(control, L"Static")) {
    *reinterpret_cast<std::u16string*>(text) += WindowText(control);
  }
  return TRUE;
}

bool AsksYesOrNo(HWND box) {
  return GetDlgItem(box, IDYES) != nullptr;
}

void PrintBox(HWND box) {
  std::u16string text;
  EnumChildWindows(box, TakeStaticText, reinterpret_cast<LPARAM>(&text));
  Print(u"box " + Quoted(WindowText(box)) + u" " + Quoted(text) +
        (AsksYesOrNo(box) ? u" YesNo" : u" OK"));
}

void Answer(HWND box, bool yes) {
  const int button = !AsksYesOrNo(box) ? IDOK : yes ? IDYES : IDNO;
  Print(button == IDOK ? u"answer OK" : yes ? u"answer Yes" : u"answer No");
  PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
}

// Handles the open boxes at each look.
class Rounds {
 public:
  explicit Rounds(const BoxOrders& orders) : orders_(orders) {}

  void Look() {
    const auto open = OpenBoxes();
    Forget(printed_, open);
    Forget(answered_, open);
    const bool answer = orders_.keep ? Released() : orders_.answer;
    for (HWND box : open) {
      if (Note(printed_, box)) {
        PrintBox(box);
      }
      if (answer && Note(answered_, box)) {
        Answer(box, orders_.yes);
      }
    }
  }

 private:
  // Forgets closed boxes: their handles may be reused.
  static void Forget(std::vector<HWND>& known, const std::vector<HWND>& open) {
    std::erase_if(known,
                  [&](HWND box) { return std::find(open.begin(), open.end(), box) == open.end(); });
  }
  static bool Note(std::vector<HWND>& known, HWND box) {
    const bool isNew = std::find(known.begin(), known.end(), box) == known.end();
    if (isNew) {
      known.push_back(box);
    }
    return isNew;
  }
  bool Released() const {
    return !orders_.releaseFile.empty() &&
           GetFileAttributesW(com::Wide(orders_.releaseFile).c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  const BoxOrders& orders_;
  std::vector<HWND> printed_;
  std::vector<HWND> answered_;
};

}  // namespace

BoxWatcher::BoxWatcher(BoxOrders orders)
    : orders_(std::move(orders)),
      stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)),
      thread_(CreateThread(nullptr, 0, Work, this, 0, nullptr)) {}

BoxWatcher::~BoxWatcher() {
  SetEvent(stop_);
  WaitForSingleObject(thread_, INFINITE);
  CloseHandle(thread_);
  CloseHandle(stop_);
}

DWORD WINAPI BoxWatcher::Work(void* watcher) {
  const auto& self = *static_cast<BoxWatcher*>(watcher);
  Rounds rounds(self.orders_);
  while (WaitForSingleObject(self.stop_, kLook) == WAIT_TIMEOUT) {
    rounds.Look();
  }
  return 0;
}

}  // namespace sample_host
