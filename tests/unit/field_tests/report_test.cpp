#include "field-tests/core/report.h"

#include <gmock/gmock.h>

namespace field_tests {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const WineOutcomes kWine("# a comment\r\n\r\np A.FailsInWine: a reason: with a colon\r\n");

Case Of(const std::string& name, Outcome outcome, const std::string& text = {}) {
  return {.program = "p", .name = name, .outcome = outcome, .text = text};
}

Report SomeReport() {
  Report report;
  report.component = "Vilnor.dll 1.5.0.0";
  report.cases = {Of("A.Good", Outcome::Passed), Of("A.Bad", Outcome::Failed, "1 < 2 & \"x\"\x01"),
                  Of("A.Left", Outcome::NotRun, "it needs a database")};
  report.times = {{.program = "p", .seconds = 7}};
  return report;
}

TEST(Report, EverythingIsCounted) {
  const auto cases = SomeReport().cases;
  EXPECT_EQ(SummaryOf(cases), "1 passed, 1 failed, 1 not run");
  EXPECT_EQ(SummaryOf({cases[0]}), "1 passed, 0 failed");
  EXPECT_EQ(LineOf({.program = "p", .seconds = 7}, cases),
            "p: 1 passed, 1 failed, 1 not run (7 s)");
}

TEST(Report, FailuresStandWithTheirOutputAsText) {
  const auto html = HtmlOf(SomeReport(), kWine);
  EXPECT_THAT(html, HasSubstr("<pre>1 &lt; 2 &amp; &quot;x&quot;?</pre>"));
  EXPECT_THAT(html, HasSubstr("it needs a database"));
  EXPECT_THAT(html, Not(HasSubstr("This is Wine")));
}

TEST(Report, WineSaysThatItIsNoWindows) {
  auto report = SomeReport();
  report.inWine = true;
  EXPECT_THAT(HtmlOf(report, kWine), HasSubstr("This is Wine, not Windows."));
}

TEST(Report, DifferencesFromWineAreThoseOfTestsThatRan) {
  const Cases cases = {Of("A.Good", Outcome::Passed), Of("A.Bad", Outcome::Failed),
                       Of("A.FailsInWine", Outcome::Passed), Of("A.Left", Outcome::NotRun)};
  std::vector<std::string> names;
  for (const auto& each : DifferencesFromWine(cases, kWine)) {
    names.push_back(each.test->name + ": " + WordOf(each.inWine));
  }
  EXPECT_THAT(names, ElementsAre("A.Bad: passed", "A.FailsInWine: failed"));
}

}  // namespace
}  // namespace field_tests
