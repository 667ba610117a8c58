#include "windows/user32_windows.h"

#include <gmock/gmock.h>
#include <tuple>

#include "com/win32.h"

namespace system_tests {
namespace {

using Message = std::tuple<platform::WindowHandle, std::int32_t, std::int32_t, std::int32_t>;

std::vector<Message> received;

std::int32_t Note(platform::WindowHandle window, std::int32_t message, std::int32_t wParam,
                  std::int32_t lParam) {
  if (message < WM_USER) {
    return ::windows::User32Windows().DefaultProcedure(window, message, wParam, lParam);
  }
  received.emplace_back(window, message, wParam, lParam);
  return 42;
}

class User32Windows : public testing::Test {
 protected:
  User32Windows() { received.clear(); }
  ~User32Windows() override {
    windows_.DestroyWindow(window_);
    windows_.UnregisterClass(kClass, 0);
  }

  std::int32_t Register() {
    return windows_.RegisterClass({.procedure = Note, .menuName = {}, .className = kClass});
  }
  platform::WindowHandle Create() {
    return windows_.CreateWindow(
        {.className = kClass, .title = u"Länk", .width = 640, .height = 480});
  }
  HWND handle() const { return reinterpret_cast<HWND>(static_cast<std::intptr_t>(window_)); }

  const std::u16string kClass = u"VilnorTestWindow";
  ::windows::User32Windows windows_;
  platform::WindowHandle window_ = 0;
};

TEST_F(User32Windows, WindowClassIsRegisteredOnce) {
  EXPECT_NE(Register(), 0);
  EXPECT_EQ(Register(), 0);
  EXPECT_TRUE(windows_.UnregisterClass(kClass, 0));
  EXPECT_FALSE(windows_.UnregisterClass(kClass, 0));
}

TEST_F(User32Windows, HiddenWindowIsCreatedAsDescribed) {
  Register();
  window_ = Create();
  ASSERT_NE(window_, 0);
  std::array<wchar_t, 20> title{};
  GetWindowTextW(handle(), title.data(), static_cast<int>(title.size()));
  EXPECT_EQ(std::wstring(title.data()), L"Länk");
  EXPECT_FALSE(IsWindowVisible(handle()));
  EXPECT_FALSE(IsWindowUnicode(handle()));
  RECT place{};
  GetWindowRect(handle(), &place);
  EXPECT_EQ(place.right - place.left, 640);
  EXPECT_EQ(place.bottom - place.top, 480);
}

TEST_F(User32Windows, MessagesReachTheWindowProcedureOfTheClass) {
  Register();
  window_ = Create();
  EXPECT_EQ(SendMessageA(handle(), 10002, static_cast<WPARAM>(-4711), 5), 42);
  EXPECT_THAT(received, testing::ElementsAre(Message{window_, 10002, -4711, 5}));
}

TEST_F(User32Windows, WindowWithoutAClassGetsNoHandle) {
  EXPECT_EQ(Create(), 0);
}

TEST_F(User32Windows, ClassWithWindowsIsKept) {
  Register();
  window_ = Create();
  EXPECT_FALSE(windows_.UnregisterClass(kClass, 0));
  EXPECT_TRUE(windows_.DestroyWindow(window_));
  EXPECT_FALSE(windows_.DestroyWindow(window_));
  EXPECT_TRUE(windows_.UnregisterClass(kClass, 0));
}

TEST_F(User32Windows, LivingWindowsAreCounted) {
  EXPECT_FALSE(::windows::WindowsExist());
  Register();
  window_ = Create();
  EXPECT_TRUE(::windows::WindowsExist());
  windows_.DestroyWindow(window_);
  EXPECT_FALSE(::windows::WindowsExist());
}

}  // namespace
}  // namespace system_tests
