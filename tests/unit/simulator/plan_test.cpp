#include "simulator/core/plan.h"

#include <gmock/gmock.h>

#include "automation/date.h"
#include "automation/text.h"

namespace {

using simulator::Outcome;
using simulator::ParsePlan;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

TEST(Plan, EmptyPlanSendsWithDefaults) {
  const auto plan = ParsePlan(u"");
  EXPECT_EQ(plan.outcome, Outcome::Sent);
  EXPECT_EQ(plan.caseId, std::nullopt);
  EXPECT_EQ(plan.wait, std::chrono::seconds(5));
  EXPECT_THAT(plan.problems, IsEmpty());
}

TEST(Plan, PairsOnOneLineAreRead) {
  const auto plan = ParsePlan(u"outcome=changed;caseid=26-7;user=Åsa Öberg;keep=C:\\out dir");
  EXPECT_EQ(plan.outcome, Outcome::Changed);
  EXPECT_EQ(plan.caseId, u"26-7");
  EXPECT_EQ(plan.userName, u"Åsa Öberg");
  EXPECT_EQ(plan.keepFolder, u"C:\\out dir");
  EXPECT_THAT(plan.problems, IsEmpty());
}

TEST(Plan, LinesOfAFileAreRead) {
  const auto plan = ParsePlan(
      u"\uFEFF# what to answer; always\r\n\r\nOutcome = withdrawn\r\nstatus=\ncancelled=2\n"
      u"log=C:\\log.txt\nwait=250");
  EXPECT_EQ(plan.outcome, Outcome::Withdrawn);
  EXPECT_EQ(plan.status, u"");
  EXPECT_EQ(plan.cancelled, u"2");
  EXPECT_EQ(plan.logFile, u"C:\\log.txt");
  EXPECT_EQ(plan.wait, std::chrono::milliseconds(250));
  EXPECT_THAT(plan.problems, IsEmpty());
}

TEST(Plan, EqualsSignsInAValueAreKept) {
  EXPECT_EQ(ParsePlan(u"caseid=a=b").caseId, u"a=b");
}

TEST(Plan, UnknownPlanEntriesAreReportedAndTheRestIsKept) {
  for (const std::u16string wrong :
       {u"outcome=skickat", u"wait=long", u"wait=-1", u"wait=60001", u"colour=red", u"sent"}) {
    const auto plan = ParsePlan(u"user=anna;" + wrong + u";log=C:\\log.txt");
    ASSERT_THAT(plan.problems, SizeIs(1));
    EXPECT_THAT(automation::ToUtf8(plan.problems[0]), HasSubstr(automation::ToUtf8(wrong)));
    EXPECT_EQ(plan.userName, u"anna");
    EXPECT_EQ(plan.logFile, u"C:\\log.txt");
  }
}

TEST(Plan, MissingPlanEntriesTakeTheirDefaults) {
  simulator::Request request;
  request.participant = u"annab";
  const auto now = automation::MakeDate({2026, 11, 6, 14, 5, 9});
  const auto open = AnswerByPlan(ParsePlan(u"outcome=changed"), request, now);
  EXPECT_EQ(open.outcome, Outcome::Changed);
  EXPECT_EQ(open.caseId, u"261106140509");
  EXPECT_EQ(open.userName, u"annab");
  const auto named = AnswerByPlan(ParsePlan(u"caseid=;user=x"), request, now);
  EXPECT_EQ(named.caseId, u"");
  EXPECT_EQ(named.userName, u"x");
}

}  // namespace
