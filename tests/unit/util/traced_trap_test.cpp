// The line that each procedure under the trap gives.
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "util/error_trap.h"
#include "util_fixture.h"

namespace util {
namespace {

using automation::AutomationError;
using automation::RuntimeError;
using Lines = std::vector<std::string>;

class TracedTrap : public UtilTest {
 protected:
  TracedTrap() { trace.TurnOn(); }
  template <class Body>
  std::string LineOf(Body body) {
    trace.lines.clear();
    UnderTrap(u" in P", kModBVilnorIcon, body);
    EXPECT_EQ(trace.lines.size(), 1U);
    return fakes::Trace::TextOf(trace.lines.at(0));
  }
};

TEST_F(TracedTrap, ResultIsToldFromAnEmptyOne) {
  EXPECT_EQ(LineOf([] {}), "P Done");
  EXPECT_EQ(LineOf([] { return 42; }), "P Done");
  EXPECT_EQ(LineOf([] { return 0; }), "P Empty");
  EXPECT_EQ(LineOf([] { return true; }), "P Done");
  EXPECT_EQ(LineOf([] { return false; }), "P Empty");
  EXPECT_EQ(LineOf([] { return std::u16string(u"Öberg"); }), "P Done");
  EXPECT_EQ(LineOf([] { return std::u16string(); }), "P Empty");
  EXPECT_EQ(LineOf([] { return std::optional(0); }), "P Done");
  EXPECT_EQ(LineOf([] { return std::optional<int>(); }), "P Empty");
  EXPECT_EQ(LineOf([] { return std::make_unique<int>(0); }), "P Done");
  EXPECT_EQ(LineOf([] { return std::unique_ptr<int>(); }), "P Empty");
}

TEST_F(TracedTrap, FailureHasTheNumberOfItsBoxAndNothingElseOfIt) {
  EXPECT_EQ(LineOf([] { throw AutomationError(-2147217900, u"ADO", u"Syntaxfel nära 'Öberg'"); }),
            "P Failed -2147217900");
  EXPECT_EQ(LineOf([]() -> int { throw std::bad_alloc(); }), "P Failed 7");
  EXPECT_EQ(dialogs.shown.size(), 2U);
}

TEST_F(TracedTrap, BoxThatNobodySawIsTold) {
  dialogs.answers = {platform::Answer::None};
  EXPECT_EQ(LineOf([] { throw AutomationError(RuntimeError::Overflow); }), "P Unshown 6");
  class NoDialogs : public platform::Dialogs {
   public:
    platform::Answer Show(const platform::MessageBox& /*box*/) override { throw std::bad_alloc(); }
  } none;
  platform::Platform withoutDialogs = fakes::With(ports, none);
  platform::Use(withoutDialogs);
  EXPECT_EQ(LineOf([] { throw AutomationError(RuntimeError::Overflow); }), "P Unshown 6");
  platform::Use(ports);
}

TEST_F(TracedTrap, ErrorForTheCallerIsTold) {
  EXPECT_THROW(
      WithoutTrap(u"InitConnection", [] { throw AutomationError(3705, u"ADODB", u"open"); }),
      AutomationError);
  WithoutTrap(u"InitConnection", [] {});
  EXPECT_EQ(trace.Texts(), (Lines{"InitConnection Raised 3705", "InitConnection Done"}));
  EXPECT_TRUE(dialogs.shown.empty());
}

}  // namespace
}  // namespace util
