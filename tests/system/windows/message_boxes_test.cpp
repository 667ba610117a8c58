#include "windows/message_boxes.h"

#include <gmock/gmock.h>

#include "system/com/box_answerer.h"

namespace system_tests {
namespace {

using platform::Answer;
using platform::Buttons;
using platform::Icon;

TEST(MessageBoxes, ShowTheirTextUnderTheirTitle) {
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

TEST(MessageBoxes, CarryTheComponentsNameWhenTheyHaveNoTitle) {
  const BoxAnswerer user;
  ::windows::MessageBoxes().Show({.text = u"XMLDOM Error", .title = {}});
  ASSERT_EQ(user.Shown().size(), 1U);
  EXPECT_EQ(user.Shown()[0].title, L"Vilnor");
}

TEST(MessageBoxes, CarryTheSystemsIcons) {
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

TEST(MessageBoxes, TellYesFromNo) {
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

TEST(MessageBoxes, HoldUpTheThreadsOwnWindowsUntilTheyAreAnswered) {
  const HWND window = CreateWindowExW(0, L"STATIC", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                      100, 100, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  BOOL enabledMeanwhile = TRUE;
  const BoxAnswerer user(Boxes::OfThisProcess, IDOK,
                         [&] { enabledMeanwhile = IsWindowEnabled(window); });
  ::windows::MessageBoxes().Show({.text = u"text", .title = u"title"});
  EXPECT_EQ(enabledMeanwhile, FALSE);
  EXPECT_NE(IsWindowEnabled(window), FALSE);
  DestroyWindow(window);
}

}  // namespace
}  // namespace system_tests
