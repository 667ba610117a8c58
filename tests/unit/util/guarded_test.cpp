#include "util/guarded.h"

#include <new>
#include <stdexcept>

#include "util_fixture.h"

namespace util {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

class TheErrorTrap : public UtilTest {};

TEST_F(TheErrorTrap, ShowsNumberBlankDescriptionAndPlaceUnderTheComponentsTitle) {
  Guarded(u" in OpenWithNewCase", kBVilnorIcon,
          [] { throw AutomationError(-2147217900, u"provider", u"Syntaxfel nära 'Å'."); });
  EXPECT_EQ(dialogs.shown, (Boxes{{.text = u"-2147217900 Syntaxfel nära 'Å'. in OpenWithNewCase",
                                   .title = u"Vilnor Link connection",
                                   .icon = platform::Icon::Exclamation,
                                   .buttons = platform::Buttons::Ok}}));
}

TEST_F(TheErrorTrap, GivesTheResultAndShowsNothingWithoutAnError) {
  EXPECT_EQ(Guarded(u" in P", kModBVilnorIcon, [] { return 42; }), 42);
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(TheErrorTrap, GivesTheEmptyResultAfterAnError) {
  const auto fail = [](auto empty) {
    return Guarded(u" in P", kModBVilnorIcon,
                   [&]() -> decltype(empty) { throw AutomationError(RuntimeError::TypeMismatch); });
  };
  EXPECT_EQ(fail(std::u16string(u"text")), u"");
  EXPECT_EQ(fail(7), 0);
  EXPECT_EQ(fail(true), false);
  EXPECT_EQ(fail(automation::Date{5}), automation::Date{});
  EXPECT_EQ(dialogs.shown, Boxes(4, ErrorBox(u"13 Type mismatch in P")));
}

TEST_F(TheErrorTrap, TakesExhaustedMemoryAsError7AndAnythingElseAsError440) {
  Guarded(u" in P", kModBVilnorIcon, [] { throw std::bad_alloc(); });
  Guarded(u" in P", kModBVilnorIcon, [] { throw std::runtime_error("unforeseen"); });
  Guarded(u" in P", kModBVilnorIcon, [] { throw 3; });
  EXPECT_EQ(dialogs.Texts(),
            (std::vector<std::u16string>{u"7 Out of memory in P", u"440 Automation error in P",
                                         u"440 Automation error in P"}));
}

TEST_F(TheErrorTrap, RunsTheCleanUpAfterTheBoxAndDropsItsErrors) {
  std::size_t boxesAtCleanUp = 0;
  EXPECT_EQ(
      Guarded(
          u" in P", kDBVilnorIcon, []() -> int { throw AutomationError(RuntimeError::Overflow); },
          [&] {
            boxesAtCleanUp = dialogs.shown.size();
            throw AutomationError(RuntimeError::ObjectNotSet);
          }),
      0);
  EXPECT_EQ(boxesAtCleanUp, 1U);
  EXPECT_EQ(dialogs.shown, Boxes{ErrorBox(u"6 Overflow in P")});
}

TEST_F(TheErrorTrap, CleansUpAndLetsNothingOutWhereTheBoxCannotBeShown) {
  class NoDialogs : public platform::Dialogs {
   public:
    platform::Answer Show(const platform::MessageBox& /*box*/) override { throw std::bad_alloc(); }
  } none;
  platform::Platform withoutDialogs = fakes::With(ports, none);
  platform::Use(withoutDialogs);
  const auto before = ErrorsShown();
  bool cleaned = false;
  EXPECT_EQ(
      Guarded(
          u" in P", kDBVilnorIcon, []() -> int { throw AutomationError(RuntimeError::Overflow); },
          [&] { cleaned = true; }),
      0);
  EXPECT_TRUE(cleaned);
  EXPECT_EQ(ErrorsShown(), before + 1);
  platform::Use(ports);
}

TEST_F(TheErrorTrap, DoesNotCleanUpWithoutAnError) {
  bool cleaned = false;
  Guarded(
      u" in P", kDBVilnorIcon, [] {}, [&] { cleaned = true; });
  EXPECT_FALSE(cleaned);
}

TEST_F(TheErrorTrap, CountsTheBoxesOfErrors) {
  const auto before = ErrorsShown();
  Guarded(u" in P", kModBVilnorIcon, [] { throw AutomationError(RuntimeError::Overflow); });
  EXPECT_EQ(ErrorsShown(), before + 1);
}

}  // namespace
}  // namespace util
