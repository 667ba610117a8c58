#include "automation/current_error.h"

#include <gtest/gtest.h>
#include <new>
#include <stdexcept>

namespace automation {
namespace {

template <class Thrown>
AutomationError Caught(const Thrown& thrown) {
  try {
    throw thrown;
  } catch (...) {
    EXPECT_EQ(CurrentErrorNumber(), CurrentError().number());
    return CurrentError();
  }
}

TEST(CurrentError, AutomationErrorIsTakenUnchanged) {
  const AutomationError error = Caught(AutomationError(3704, u"ADODB.Recordset", u"Closed."));
  EXPECT_EQ(error.number(), 3704);
  EXPECT_EQ(error.source(), u"ADODB.Recordset");
  EXPECT_EQ(error.description(), u"Closed.");
}

TEST(CurrentError, FailedAllocationIsOutOfMemory) {
  EXPECT_TRUE(Caught(std::bad_alloc()).Is(RuntimeError::OutOfMemory));
}

TEST(CurrentError, ForeignExceptionIsAutomationError) {
  EXPECT_TRUE(Caught(std::runtime_error("x")).Is(RuntimeError::AutomationFailure));
  EXPECT_TRUE(Caught(1).Is(RuntimeError::AutomationFailure));
}

}  // namespace
}  // namespace automation
