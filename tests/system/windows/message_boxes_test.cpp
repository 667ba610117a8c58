#include "windows/message_boxes.h"

#include <gmock/gmock.h>

#include "system/com/box_answerer.h"

namespace system_tests {
namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;

TEST(MessageBoxes, BoxShowsItsTextUnderItsTitle) {
  const BoxAnswerer user;
  ::windows::MessageBoxes boxes;
  EXPECT_EQ(boxes.Show({.text = u"Ärendet är borttaget\r\n\r\nTa bort kopplingen? Ж",
                        .title = u"Vilnor Link connection",
                        .icon = Icon::Exclamation,
                        .buttons = Buttons::Ok}),
            Answer::Ok);
  ASSERT_EQ(user.Shown().size(), 1U);
  EXPECT_EQ(user.Shown()[0].title, L"Vilnor Link connection");
  EXPECT_EQ(user.Shown()[0].text, L"Ärendet är borttaget\r\n\r\nTa bort kopplingen? Ж");
}

TEST(MessageBoxes, BoxWithoutATitleHasTheComponentsName) {
  const BoxAnswerer user;
  ::windows::MessageBoxes().Show({.text = u"XMLDOM Error", .title = {}});
  ASSERT_EQ(user.Shown().size(), 1U);
  EXPECT_EQ(user.Shown()[0].title, L"Vilnor");
}

TEST(MessageBoxes, BoxHasTheSystemsIcon) {
  struct Case {
    Icon icon;
    LPCWSTR systemIcon;
  };
  for (const auto& [icon, systemIcon] : {Case{Icon::Critical, IDI_ERROR},
                                         {Icon::Exclamation, IDI_WARNING},
                                         {Icon::Question, IDI_QUESTION}}) {
    const BoxAnswerer user;
    ::windows::MessageBoxes().Show({.text = u"text", .title = u"title", .icon = icon});
    ASSERT_EQ(user.Shown().size(), 1U);
    EXPECT_NE(user.Shown()[0].icon, nullptr);
    EXPECT_EQ(user.Shown()[0].icon, LoadIconW(nullptr, systemIcon));
  }
}

TEST(MessageBoxes, YesAndNoAreDistinguished) {
  const platform::MessageBox question = {
      .text = u"?", .title = u"?", .icon = Icon::Question, .buttons = Buttons::YesNo};
  {
    const BoxAnswerer user(Boxes::OfThisProcess, IDNO);
    EXPECT_EQ(::windows::MessageBoxes().Show(question), Answer::No);
  }
  {
    const BoxAnswerer user(Boxes::OfThisProcess, IDYES);
    EXPECT_EQ(::windows::MessageBoxes().Show(question), Answer::Yes);
  }
}

// A window on the test's thread.
class Window {
 public:
  explicit Window(DWORD style = WS_VISIBLE)
      : handle_(CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | style, 0, 0, 100, 100,
                                nullptr, nullptr, nullptr, nullptr)) {}
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  ~Window() { DestroyWindow(handle_); }
  HWND get() const { return handle_; }
  bool IsEnabled() const { return IsWindowEnabled(handle_) != FALSE; }

 private:
  HWND handle_;
};

// Another program's window, in front of the host.
class OtherInFront {
 public:
  OtherInFront() {
    WaitForSingleObject(ready_, INFINITE);
    // A thread learns from its messages that it is no longer active.
    const ULONGLONG end = GetTickCount64() + 5000;
    while (GetActiveWindow() != nullptr && GetTickCount64() < end) {
      MSG message{};
      PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);
    }
    EXPECT_EQ(GetActiveWindow(), nullptr) << "the thread has an active window still";
  }
  OtherInFront(const OtherInFront&) = delete;
  OtherInFront& operator=(const OtherInFront&) = delete;
  ~OtherInFront() { SetEvent(done_); }

 private:
  void Run() {
    const Window window;
    SetForegroundWindow(window.get());
    SetEvent(ready_);
    while (MsgWaitForMultipleObjects(1, &done_, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) {
      MSG message{};
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        DispatchMessageW(&message);
      }
    }
  }

  HANDLE ready_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE done_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  Thread thread_{[this] { Run(); }};
};

const platform::MessageBox kBox = {.text = u"text", .title = u"title"};

TEST(MessageBoxes, BoxIsOwnedByTheActiveWindowAndDisablesTheOthers) {
  const Window first;
  const Window hidden(0);
  const Window second;
  SetForegroundWindow(first.get());
  bool secondMeanwhile = true;
  bool firstMeanwhile = true;
  const BoxAnswerer user(Boxes::OfThisProcess, IDOK, [&] {
    firstMeanwhile = first.IsEnabled();
    secondMeanwhile = second.IsEnabled();
  });
  ::windows::MessageBoxes().Show(kBox);
  ASSERT_EQ(user.Shown().size(), 1U);
  EXPECT_EQ(user.Shown()[0].owner, first.get());
  EXPECT_FALSE(firstMeanwhile);
  EXPECT_FALSE(secondMeanwhile);
  EXPECT_TRUE(first.IsEnabled());
  EXPECT_TRUE(second.IsEnabled());
}

TEST(MessageBoxes, BoxComesToTheFrontWithTheHostsWindowOverAnotherProgram) {
  const Window host;
  const OtherInFront other;
  bool inFront = false;
  const BoxAnswerer user(Boxes::OfThisProcess, IDOK, [&] {
    const ULONGLONG end = GetTickCount64() + 5000;
    while (!inFront && GetTickCount64() < end) {
      inFront = GetWindow(GetForegroundWindow(), GW_OWNER) == host.get();
      Sleep(1);
    }
  });
  ::windows::MessageBoxes().Show(kBox);
  ASSERT_EQ(user.Shown().size(), 1U);
  EXPECT_EQ(user.Shown()[0].owner, host.get());
  EXPECT_TRUE(inFront);
  EXPECT_TRUE(host.IsEnabled());
}

TEST(MessageBoxes, BoxAsksTheSystemForTheForeground) {
  EXPECT_EQ(::windows::BoxStyle({.text = u"", .title = u"", .icon = Icon::Exclamation}),
            std::uint32_t{MB_ICONWARNING | MB_OK | MB_TASKMODAL | MB_SETFOREGROUND});
  EXPECT_EQ(::windows::BoxStyle(
                {.text = u"", .title = u"", .icon = Icon::Question, .buttons = Buttons::YesNo}),
            std::uint32_t{MB_ICONQUESTION | MB_YESNO | MB_TASKMODAL | MB_SETFOREGROUND});
}

TEST(MessageBoxes, BoxOfAHostWithoutAWindowHasNoOwner) {
  const BoxAnswerer user;
  ::windows::MessageBoxes().Show(kBox);
  ASSERT_EQ(user.Shown().size(), 1U);
  EXPECT_EQ(user.Shown()[0].owner, nullptr);
}

TEST(MessageBoxes, WindowDisabledByTheHostStaysDisabled) {
  const Window host;
  const Window disabled;
  EnableWindow(disabled.get(), FALSE);
  SetForegroundWindow(host.get());
  const BoxAnswerer user;
  ::windows::MessageBoxes().Show(kBox);
  EXPECT_FALSE(disabled.IsEnabled());
}

TEST(MessageBoxes, YesIsTheDefaultButtonOfAQuestion) {
  const BoxAnswerer user(Boxes::OfThisProcess, IDNO);
  ::windows::MessageBoxes().Show(
      {.text = u"?", .title = u"?", .icon = Icon::Question, .buttons = Buttons::YesNo});
  ASSERT_EQ(user.Shown().size(), 1U);
  EXPECT_EQ(user.Shown()[0].defaultButton, IDYES);
}

// The host ends its message loop while the question is open.
TEST(MessageBoxes, BoxEndedWithTheHostIsNotAnswered) {
  const DWORD thread = GetCurrentThreadId();
  const BoxAnswerer user(Boxes::OfThisProcess, 0,
                         [&] { PostThreadMessageW(thread, WM_QUIT, 0, 0); });
  EXPECT_EQ(::windows::MessageBoxes().Show(
                {.text = u"?", .title = u"?", .icon = Icon::Question, .buttons = Buttons::YesNo}),
            Answer::None);
  // The host's own loop ends too, with no message left for the next test's boxes.
  int words = 0;
  MSG message{};
  while (PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE) {
    ++words;
  }
  EXPECT_GE(words, 1);
}

}  // namespace
}  // namespace system_tests
