// The notification window and its class as the system stores them: like a window created with only
// a procedure, a title and a size.
#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <string>
#include <tuple>

#include "system/com/component.h"

namespace system_tests {
namespace {

std::string TextOf(HWND window, int(WINAPI* get)(HWND, LPSTR, int)) {
  std::array<char, 100> text{};
  get(window, text.data(), static_cast<int>(text.size()));
  return text.data();
}

auto PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return std::tuple(place.left, place.top, place.right, place.bottom);
}

struct WindowRecord {
  explicit WindowRecord(HWND window)
      : style(GetWindowLongA(window, GWL_STYLE)),
        extendedStyle(GetWindowLongA(window, GWL_EXSTYLE)),
        instance(GetWindowLongA(window, GWL_HINSTANCE)),
        userData(GetWindowLongA(window, GWL_USERDATA)),
        parent(GetAncestor(window, GA_PARENT)),
        owner(GetWindow(window, GW_OWNER)),
        menu(GetMenu(window)),
        place(PlaceOf(window)),
        title(TextOf(window, GetWindowTextA)) {}
  bool operator==(const WindowRecord&) const = default;

  LONG style;
  LONG extendedStyle;
  LONG instance;
  LONG userData;
  HWND parent;
  HWND owner;
  HMENU menu;
  std::tuple<LONG, LONG, LONG, LONG> place;
  std::string title;
};

struct ClassRecord {
  explicit ClassRecord(HWND window) {
    std::ranges::transform(kFields, fields.begin(),
                           [&](int field) { return GetClassLongA(window, field); });
    const auto* const name = reinterpret_cast<const char*>(GetClassLongA(window, GCL_MENUNAME));
    menuName = name == nullptr ? "none" : name;
  }
  bool operator==(const ClassRecord&) const = default;

  static constexpr std::array kFields = {GCL_STYLE, GCL_CBCLSEXTRA, GCL_CBWNDEXTRA,   GCL_HMODULE,
                                         GCL_HICON, GCL_HCURSOR,    GCL_HBRBACKGROUND};
  std::array<DWORD, kFields.size()> fields{};
  std::string menuName;
};

// With all other fields of the system's records zero.
class BareWindow {
 public:
  BareWindow() {
    WNDCLASSA record{};
    record.lpfnWndProc = DefWindowProcA;
    record.lpszMenuName = "";
    record.lpszClassName = kClass;
    RegisterClassA(&record);
    window_ = CreateWindowExA(0, kClass, "VB Window", 0, 0, 0, 640, 480, nullptr, nullptr, nullptr,
                              nullptr);
  }
  BareWindow(const BareWindow&) = delete;
  BareWindow& operator=(const BareWindow&) = delete;
  ~BareWindow() {
    DestroyWindow(window_);
    UnregisterClassA(kClass, nullptr);
  }
  HWND get() const { return window_; }

 private:
  static constexpr const char* kClass = "BareWindow";
  HWND window_ = nullptr;
};

TEST(NotificationWindowRecord, NotificationWindowRecordMatchesABareWindow) {
  const auto session = NewBVilnor();
  ASSERT_TRUE(session);
  HWND const window = NotificationWindowHandles().front();
  const BareWindow bare;
  ASSERT_NE(bare.get(), nullptr);
  EXPECT_EQ(TextOf(window, GetClassNameA), "KestraToVilnor");
  EXPECT_TRUE(WindowRecord(window) == WindowRecord(bare.get()));
  EXPECT_EQ(PlaceOf(window), std::tuple(0, 0, 640, 480));
  EXPECT_TRUE(ClassRecord(window) == ClassRecord(bare.get()));
}

}  // namespace
}  // namespace system_tests
