#include "fhp/send_check.h"

#include <gmock/gmock.h>

#include "db/connection_state.h"
#include "unit/fhp/fixture.h"

namespace fhp {
namespace {

using Texts = std::vector<std::u16string>;

const std::u16string kMessage =
    u"Vilnor Link kan max ta emot 4 st planerade åtgärder per tand, ÖK och UK\r\n"
    u"Väljer du OK följer inte samtliga uppgifter med från Kestra Dental";
constexpr const char16_t* kStatement = u"SELECT * FROM SEPrerequest WHERE SEPrerequestID = 8";

struct Plan {
  Value teeth = Null();
  Value upperJaw = Null();
  Value lowerJaw = Null();
};

class SendCheck : public FhpFixture {
 protected:
  bool Check(const Plan& plan) {
    database.Answer(kStatement, {{u"PlanTreatm", u"PlanTreatmUJaw", u"PlanTreatmLJaw"},
                                 {{plan.teeth, plan.upperJaw, plan.lowerJaw}}});
    return OKToSend(8, errCode, errMsg);
  }
  void ExpectFits(const Plan& plan) {
    errCode = 7;
    errMsg = u"host's";
    EXPECT_TRUE(Check(plan));
    EXPECT_EQ(errCode, 0);
    EXPECT_EQ(errMsg, u"");
    EXPECT_TRUE(Boxes().empty());
  }
  void ExpectTooMany(const Plan& plan) {
    errCode = 7;
    errMsg = u"host's";
    EXPECT_FALSE(Check(plan));
    EXPECT_EQ(errCode, 100);
    EXPECT_EQ(errMsg, kMessage);
    EXPECT_TRUE(Boxes().empty());
  }
  // The box is shown and the host's variables are unchanged.
  void ExpectError(const std::u16string& box) {
    EXPECT_EQ(errCode, 7);
    EXPECT_EQ(errMsg, u"host's");
    EXPECT_EQ(dialogs.shown,
              (std::vector<platform::MessageBox>{{.text = box,
                                                  .title = u"Vilnor Link connection",
                                                  .icon = platform::Icon::Exclamation,
                                                  .buttons = platform::Buttons::Ok}}));
  }
  // A plan that cannot be checked is refused.
  void ExpectRefused(const std::u16string& teeth) {
    SCOPED_TRACE(automation::ToUtf8(teeth.substr(0, 40)));
    errCode = 7;
    errMsg = u"host's";
    dialogs.shown.clear();
    EXPECT_FALSE(Check({.teeth = teeth}));
    ExpectError(u"5 Invalid procedure call or argument in OKToSend");
    dialogs.shown.clear();
  }

  std::int16_t errCode = 7;
  std::u16string errMsg = u"host's";
};

TEST_F(SendCheck, ApplicationWithoutAPlanFits) {
  ExpectFits({});
  ExpectFits({.teeth = u"", .upperJaw = u"", .lowerJaw = u""});
  ExpectFits({.teeth = u"", .upperJaw = u" ", .lowerJaw = u" "});
}

TEST_F(SendCheck, FourMeasuresAToothFitFiveDoNot) {
  ExpectFits({.teeth = u"<11>921 922 923 924</11><12>801</12>"});
  ExpectTooMany({.teeth = u"<11>921 922 923 924 925</11><12>801</12>"});
  ExpectTooMany({.teeth = u"<11>921</11><12>1 2 3 4 5</12>"});
}

TEST_F(SendCheck, EmptyPiecesOfAToothCount) {
  ExpectTooMany({.teeth = u"<11>921 922 923 924 </11>"});
  ExpectTooMany({.teeth = u"<11>921 922  923 924</11>"});
  ExpectTooMany({.teeth = u"<11> 921 922 923 924</11>"});
  ExpectFits({.teeth = u"<11>921  922 </11>"});
}

TEST_F(SendCheck, TextBetweenTeethDoesNotCount) {
  ExpectFits({.teeth = u"a b c d e f <11>921</11> a b c d e f"});
}

TEST_F(SendCheck, EachJawFitsFourMeasures) {
  ExpectFits({.upperJaw = u"1 2 3 4", .lowerJaw = u"1 2 3 4"});
  ExpectTooMany({.upperJaw = u"1 2 3 4 5", .lowerJaw = u"1"});
  ExpectTooMany({.upperJaw = u"1", .lowerJaw = u"1 2 3 4 5"});
}

TEST_F(SendCheck, OneLeadingBlankOfAJawDoesNotCountASecondDoes) {
  ExpectFits({.upperJaw = u" 1 2 3 4"});
  ExpectTooMany({.upperJaw = u"  1 2 3 4"});
  ExpectFits({.lowerJaw = u" 1 2 3 4"});
  ExpectTooMany({.lowerJaw = u"  1 2 3 4"});
  ExpectTooMany({.lowerJaw = u" 1 2 3 4 "});
}

TEST_F(SendCheck, FailingUpperJawEndsTheCheckOfAPlanWithoutALowerJaw) {
  ExpectTooMany({.upperJaw = u"1 2 3 4 5"});
}

TEST_F(SendCheck, LowerJawIsCheckedWithoutAnUpperJaw) {
  ExpectTooMany({.lowerJaw = u"1 2 3 4 5"});
}

TEST_F(SendCheck, CheckStopsAtAFailingTooth) {
  database.LogReads(true);
  Check({.teeth = u"<11>1 2 3 4 5</11>", .upperJaw = u" 1", .lowerJaw = u" 1"});
  EXPECT_TRUE(database.LogOf(u"Recordset.Field PlanTreatmUJaw").empty());
  EXPECT_TRUE(database.LogOf(u"Recordset.Field PlanTreatmLJaw").empty());
}

TEST_F(SendCheck, CheckStopsAtAFailingUpperJaw) {
  database.LogReads(true);
  Check({.upperJaw = u"1 2 3 4 5", .lowerJaw = u" 1"});
  EXPECT_TRUE(database.LogOf(u"Recordset.Field PlanTreatmLJaw").empty());
}

TEST_F(SendCheck, TrimmedJawsAreStoredOnlyInTheOpenRecord) {
  database.LogReads(true);
  Check({.upperJaw = u" 1 2", .lowerJaw = u" 3"});
  EXPECT_EQ(database.LogOf(u"Recordset.SetField"),
            (Texts{u"Recordset.SetField PlanTreatmUJaw", u"Recordset.SetField PlanTreatmLJaw"}));
  EXPECT_TRUE(database.LogOf(u"Execute").empty());
  database.ClearLog();
  Check({.upperJaw = u"1 2", .lowerJaw = u"3"});
  EXPECT_TRUE(database.LogOf(u"Recordset.SetField").empty());
}

TEST_F(SendCheck, DatabaseIsReleasedBeforeTheCheck) {
  database.LogReads(true);
  Check({.teeth = u"<11>1</11>"});
  EXPECT_EQ(database.AliveConnections(), 0);
  EXPECT_EQ(database.AliveRecordsets(), 0);
  EXPECT_EQ(db::CurrentConnectionState().gDB, nullptr);
}

TEST_F(SendCheck, MissingApplicationIsReported) {
  database.Answer(kStatement, {});
  EXPECT_FALSE(OKToSend(8, errCode, errMsg));
  ExpectError(u"91 Object variable or With block variable not set in OKToSend");
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(SendCheck, UnreadableApplicationIsReportedByTheLookupToo) {
  database.FailStatement(kStatement, {1001, u"Test", u"Scripted failure"});
  EXPECT_FALSE(OKToSend(8, errCode, errMsg));
  EXPECT_EQ(Boxes(), (Texts{u"1001 Scripted failure in GetFHPById",
                            u"91 Object variable or With block variable not set in OKToSend"}));
  EXPECT_EQ(errCode, 7);
  EXPECT_EQ(errMsg, u"host's");
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(SendCheck, UninstalledDatabaseInterfaceIsReported) {
  database.installed = false;
  EXPECT_FALSE(OKToSend(8, errCode, errMsg));
  ExpectError(u"429 ActiveX component can't create object in OKToSend");
}

TEST_F(SendCheck, PlanBeyondSixteenBitsIsReported) {
  EXPECT_FALSE(Check({.teeth = std::u16string(40000, u'x')}));
  ExpectError(u"6 Overflow in OKToSend");
}

TEST_F(SendCheck, PlanMayHave32767Characters) {
  ExpectFits({.teeth = u"<11>1</11>" + std::u16string(32757, u'x')});
  EXPECT_FALSE(Check({.teeth = u"<11>1</11>" + std::u16string(32758, u'x')}));
}

TEST_F(SendCheck, FailingToothIsReportedBeforeTheOverflow) {
  ExpectTooMany({.teeth = u"<11>1 2 3 4 5</11>" + std::u16string(40000, u'x')});
}

TEST_F(SendCheck, TooManyMeasuresInAVeryLongToothTextAreReportedBeforeOverflow) {
  // The closing tag lies beyond the last position; reading the measures does not move the position.
  EXPECT_FALSE(Check({.teeth = u"<11>" + std::u16string(40000, u'x') + u"</11>"}));
  ExpectError(u"6 Overflow in OKToSend");
  dialogs.shown.clear();
  ExpectTooMany({.teeth = u"<11>1 2 3 4 " + std::u16string(40000, u'x') + u"</11>"});
}

TEST_F(SendCheck, UnclosedToothIsRefused) {
  for (const auto* plan :
       {u"<11>1 2 3 4", u"<11>1 2 3 4 5", u"<11>1 2<12>3 4 5 6", u"<11>1</11><12>2", u"<11>",
        u"<11>1</11><>", u"<11>1 2 <12>3</11> 4 <13>5", u"<11>1 2 <12 3</11>"}) {
    ExpectRefused(plan);
  }
}

TEST_F(SendCheck, UnterminatedTagIsRefused) {
  for (const auto* plan :
       {u"<11", u"<11>1</11> < 2 3 4 5 6", u"<11>1</11><12", u"1 < 2", u"<11>1</11 < ", u"<<"}) {
    ExpectRefused(plan);
  }
}

TEST_F(SendCheck, LessThanSignAtTheVeryEndIsIgnored) {
  ExpectFits({.teeth = u"<"});
  ExpectFits({.teeth = u"<11>1</11> <"});
}

TEST_F(SendCheck, RefusedPlanLeavesTheJawsUnread) {
  database.LogReads(true);
  Check({.teeth = u"<11>1", .upperJaw = u" 1", .lowerJaw = u" 1"});
  EXPECT_TRUE(database.LogOf(u"Recordset.Field PlanTreatmUJaw").empty());
  EXPECT_TRUE(database.LogOf(u"Recordset.SetField").empty());
}

TEST_F(SendCheck, FailingToothIsReportedBeforeARefusedOne) {
  ExpectTooMany({.teeth = u"<11>1 2 3 4 5</11><12>1"});
  ExpectTooMany({.teeth = u"<11>1 2 3 4 5</11> <"});
  ExpectTooMany({.teeth = u"<11>1 2 3 4 5</11> <12"});
  ExpectTooMany({.teeth = u"<11>1 2 <12>3 4 5</11>"});
}

TEST_F(SendCheck, TagBeyondSixteenBitsOverflowsBeforeItsMissingTextIsReported) {
  EXPECT_FALSE(Check({.teeth = u"<" + std::u16string(40000, u'1') + u">1"}));
  ExpectError(u"6 Overflow in OKToSend");
  dialogs.shown.clear();
  ExpectRefused(u"<11>" + std::u16string(40000, u'x'));
}

TEST_F(SendCheck, OnlyBlanksSeparateMeasures) {
  for (const auto* other : {u"\t", u"\n", u"\r\n", u"\u00A0", u"\u2003", u",", u";"}) {
    std::u16string measures = u"1";
    for (const auto* next : {u"2", u"3", u"4", u"5"}) {
      measures.append(other).append(next);
    }
    ExpectFits({.teeth = u"<11>" + measures + u"</11>"});
    ExpectFits({.upperJaw = measures, .lowerJaw = measures});
  }
}

TEST_F(SendCheck, OnlyALeadingBlankOfAJawIsRemoved) {
  for (const auto* other : {u"\t", u"\n", u"\u00A0"}) {
    ExpectFits({.upperJaw = std::u16string(other) + u"1 2 3 4"});
    ExpectTooMany({.upperJaw = std::u16string(other) + u" 1 2 3 4"});
    ExpectTooMany({.lowerJaw = std::u16string(other) + u" 1 2 3 4"});
  }
  database.LogReads(true);
  Check({.upperJaw = u"\t1", .lowerJaw = u"\u00A01"});
  EXPECT_TRUE(database.LogOf(u"Recordset.SetField").empty());
}

TEST_F(SendCheck, NestedAndDoublyClosedTeethAreCountedEach) {
  ExpectFits({.teeth = u"<11>1 2</11></11><12>1 2 3 4</12>"});
  ExpectTooMany({.teeth = u"<11>1 <12>1 2 3 4 5</12></11>"});
  ExpectFits({.teeth = u"<11>1 2<12>3 4</12> 5 6 7 8</11>"});
}

}  // namespace
}  // namespace fhp
