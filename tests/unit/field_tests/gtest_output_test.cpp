#include "field-tests/core/gtest_output.h"

#include <gmock/gmock.h>

namespace field_tests {
namespace {

using testing::ElementsAre;

TEST(GtestOutput, ListGivesFullNamesWithoutRemarks) {
  EXPECT_THAT(
      ListedTests("NOT TESTED: MariaDB\r\nFirst.\r\n  One\r\n  Two\r\n"
                  "Products/Second.  # TypeParam = int\r\n  Case/0  # GetParam() = SQLite\r\n"),
      ElementsAre("First.One", "First.Two", "Products/Second.Case/0"));
}

TEST(GtestOutput, EachTestHasItsOutcomeAndFailedOnesTheirText) {
  const auto log = ReadTestLog("p",
                               "[----------] 3 tests from A\n"
                               "[ RUN      ] A.Good\nchatter\n[       OK ] A.Good (1 ms)\n"
                               "[ RUN      ] A.Bad/0\nx.cpp:1: Failure\nExpected\n"
                               "[  FAILED  ] A.Bad/0, where GetParam() = SQLite (2 ms)\n"
                               "[ RUN      ] A.Left\nA reason\n[  SKIPPED ] A.Left (0 ms)\n"
                               "[  FAILED  ] 1 test, listed below:\n[  FAILED  ] A.Bad/0\n");
  ASSERT_EQ(log.ended.size(), 3U);
  EXPECT_EQ(log.ended[0].outcome, Outcome::Passed);
  EXPECT_EQ(log.ended[0].text, "");
  EXPECT_EQ(log.ended[1].name, "A.Bad/0");
  EXPECT_EQ(log.ended[1].outcome, Outcome::Failed);
  EXPECT_EQ(log.ended[1].text, "x.cpp:1: Failure\nExpected");
  EXPECT_EQ(log.ended[2].outcome, Outcome::NotRun);
  EXPECT_EQ(log.unfinished, "");
}

TEST(GtestOutput, TestDuringWhichTheProgramEndedIsNamedWithItsLastWords) {
  const auto log = ReadTestLog(
      "p", "[ RUN      ] A.One\n[       OK ] A.One (1 ms)\n[ RUN      ] A.Two\nalmost\n");
  EXPECT_EQ(log.ended.size(), 1U);
  EXPECT_EQ(log.unfinished, "A.Two");
  EXPECT_EQ(log.lastWords, "almost\n");
}

TEST(GtestOutput, MarkBehindOtherOutputOnItsLineCounts) {
  const auto log = ReadTestLog("p", "[ RUN      ] A.One\nno line end[       OK ] A.One (1 ms)\n");
  ASSERT_EQ(log.ended.size(), 1U);
  EXPECT_EQ(log.ended[0].outcome, Outcome::Passed);
}

}  // namespace
}  // namespace field_tests
