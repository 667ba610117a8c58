#include "util/error_trap.h"

#include <new>
#include <stdexcept>

#include "util_fixture.h"

namespace util {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

class TheErrorTrap : public UtilTest {};

TEST_F(TheErrorTrap, ErrorBoxHasNumberDescriptionProcedureAndTitle) {
  UnderTrap(u" in OpenWithNewCase", kBVilnorIcon,
            [] { throw AutomationError(-2147217900, u"provider", u"Syntaxfel nära 'Å'."); });
  EXPECT_EQ(dialogs.shown, (Boxes{{.text = u"-2147217900 Syntaxfel nära 'Å'. in OpenWithNewCase",
                                   .title = u"Vilnor Link connection",
                                   .icon = platform::Icon::Exclamation,
                                   .buttons = platform::Buttons::Ok}}));
}

TEST_F(TheErrorTrap, SuccessGivesTheResultAndShowsNoBox) {
  EXPECT_EQ(UnderTrap(u" in P", kModBVilnorIcon, [] { return 42; }), 42);
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(TheErrorTrap, ErrorGivesTheEmptyResult) {
  const auto fail = [](auto empty) {
    return UnderTrap(u" in P", kModBVilnorIcon, [&]() -> decltype(empty) {
      throw AutomationError(RuntimeError::TypeMismatch);
    });
  };
  EXPECT_EQ(fail(std::u16string(u"text")), u"");
  EXPECT_EQ(fail(7), 0);
  EXPECT_EQ(fail(true), false);
  EXPECT_EQ(fail(automation::Date{5}), automation::Date{});
  EXPECT_EQ(dialogs.shown, Boxes(4, ErrorBox(u"13 Type mismatch in P")));
}

TEST_F(TheErrorTrap, ExhaustedMemoryIsError7AndForeignExceptionsAre440) {
  UnderTrap(u" in P", kModBVilnorIcon, [] { throw std::bad_alloc(); });
  UnderTrap(u" in P", kModBVilnorIcon, [] { throw std::runtime_error("unforeseen"); });
  UnderTrap(u" in P", kModBVilnorIcon, [] { throw 3; });
  EXPECT_EQ(dialogs.Texts(),
            (std::vector<std::u16string>{u"7 Out of memory in P", u"440 Automation error in P",
                                         u"440 Automation error in P"}));
}

TEST_F(TheErrorTrap, ActionBeforeTheBoxRunsAndItsErrorsAreIgnored) {
  std::size_t boxesBefore = 1;
  const auto attempt = Try(
      u" in P", kDBVilnorIcon, []() -> int { throw AutomationError(RuntimeError::Overflow); },
      [&] {
        boxesBefore = dialogs.shown.size();
        throw AutomationError(RuntimeError::ObjectNotSet);
      });
  EXPECT_EQ(boxesBefore, 0U);
  EXPECT_TRUE(attempt.Failed());
  EXPECT_EQ(attempt.OrEmpty(), 0);
  EXPECT_EQ(dialogs.shown, Boxes{ErrorBox(u"6 Overflow in P")});
}

TEST_F(TheErrorTrap, NoExceptionLeavesAFailingErrorBox) {
  class NoDialogs : public platform::Dialogs {
   public:
    platform::Answer Show(const platform::MessageBox& /*box*/) override { throw std::bad_alloc(); }
  } none;
  platform::Platform withoutDialogs = fakes::With(ports, none);
  platform::Use(withoutDialogs);
  bool rolledBack = false;
  const auto attempt = Try(
      u" in P", kDBVilnorIcon, []() -> int { throw AutomationError(RuntimeError::Overflow); },
      [&] { rolledBack = true; });
  EXPECT_TRUE(rolledBack);
  EXPECT_TRUE(attempt.Failed());
  platform::Use(ports);
}

TEST_F(TheErrorTrap, SuccessDoesNotRunTheActionBeforeTheBox) {
  bool rolledBack = false;
  const auto attempt = Try(
      u" in P", kDBVilnorIcon, [] {}, [&] { rolledBack = true; });
  EXPECT_FALSE(rolledBack);
  EXPECT_FALSE(attempt.Failed());
}

}  // namespace
}  // namespace util
