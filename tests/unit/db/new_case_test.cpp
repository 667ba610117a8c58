// AddNewCase beyond the table of statements.
#include "fixture.h"

namespace unit {
namespace {

using automation::Null;
using db::DBVilnor;

class NewCase : public DbTest {
 protected:
  std::vector<std::u16string> Executed() const { return database.LogOf(u"Execute"); }
  void Add(std::int32_t caseType) {
    operations.AddNewCase(4711, 12, 3, u"VL-1", 77, caseType, 5, u"åsa", u"K-9");
  }

  DBVilnor operations;
};

TEST_F(NewCase, NewCaseWritesDatesBetweenApostrophesForDatabaseType2) {
  session.gDbType = 2;
  database.AnswerIdentities({5, 40});
  Add(9);
  EXPECT_TRUE(Executed().at(0).ends_with(u",'åsa','11-16-2026 14:05:00')"));
  EXPECT_TRUE(Executed().at(2).find(u",3,'11-16-2026 14:05:00',22302,") != std::u16string::npos);
}

TEST_F(NewCase, DatabaseRefusesANewCaseWithoutDateLiterals) {
  session.gDbType = 3;
  Add(9);
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{
                         u"-2147217900 Syntax error in the statement. in AddNewCase"});
  EXPECT_FALSE(database.InTransaction());
}

TEST_F(NewCase, NewCaseTakesTheTimeOfEachStatementWhenItIsBuilt) {
  class AdvancingClock : public platform::Clock {
   public:
    automation::Date Now() override {
      return automation::MakeDate({2026, 12, 31, 23, 59, 58 + calls++});
    }
    int calls = 0;
  } advancing;
  platform::Platform later = fakes::With(ports, advancing);
  platform::Use(later);
  database.AnswerIdentities({5, 40});
  Add(9);
  EXPECT_TRUE(Executed().at(0).ends_with(u"#12-31-2026 23:59:58#)"));
  EXPECT_NE(Executed().at(2).find(u"#12-31-2026 23:59:59#"), std::u16string::npos);
}

TEST_F(NewCase, NewCaseOfAnUnknownTypeExecutesTheLastStatementAgain) {
  database.AnswerIdentities({5, 40});
  operations.DeleteVilnorUser(8);
  database.ClearLog();
  Add(2);
  const std::u16string journalInsert =
      u"Execute -1: INSERT INTO Journal (PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert, RefTBID) "
      u"values (4711,'',12,3,#11-16-2026 14:05:00#,22302,'U',0, 5)";
  const std::vector<std::u16string> expected = {
      u"BeginTrans",
      u"Execute -1: Delete from VilnorPasient where PID = 8",
      u"Execute -1: Select @@Identity",
      journalInsert,
      u"Execute -1: Select @@Identity",
      u"Execute -1: UPDATE Vilnor set Journal_ID = 40 WHERE VilnorId = 5",
      u"CommitTrans"};
  EXPECT_EQ(database.Log(), expected);
}

TEST_F(NewCase, NewCaseOfAnUnknownTypeIsRefusedAsTheFirstOperation) {
  database.ClearLog();
  Add(2);
  EXPECT_EQ(Boxes(),
            std::vector<std::u16string>{
                u"-2147217908 Command text was not set for the command object. in AddNewCase"});
  EXPECT_EQ(database.Log(),
            (std::vector<std::u16string>{u"BeginTrans", u"Execute -1: ", u"RollbackTrans"}));
  EXPECT_FALSE(database.InTransaction());
}

TEST_F(NewCase, NewCaseOfAnUnknownTypeExecutesAnEarlierObjectsStatement) {
  {
    db::ReleaseShared();
    DBVilnor earlier;
    earlier.DeleteVilnorUser(8);
  }
  DBVilnor later;
  database.ClearLog();
  later.AddNewCase(1, 1, 1, u"x", 1, 7, 1, u"y");
  EXPECT_EQ(Executed().at(0), u"Execute -1: Delete from VilnorPasient where PID = 8");
}

TEST_F(NewCase, JournalTextOfANewCaseHasNoKestraCaseIdWhenNoneIsGiven) {
  database.AnswerIdentities({5, 40});
  operations.AddNewCase(4711, 12, 3, u"VL-1", 77, 1, 5, u"åsa");
  EXPECT_NE(Executed().at(2).find(
                u"'Förhandsprövning, ärendenr:  överförd till Vilnor Link ref.nr VL-1'"),
            std::u16string::npos);
}

TEST_F(NewCase, NewCasePassesQuotesOnUnescaped) {
  operations.AddNewCase(1, 1, 1, u"VL'1", 1, 9, 5, u"d'Arc");
  EXPECT_NE(Executed().at(0).find(u"'VL'1',9,0,5,'d'Arc',"), std::u16string::npos);
}

TEST_F(NewCase, FailedNewCaseShowsTheProvidersMessageAndRollsBack) {
  database.FailStatement(u"Insert into Vilnor", {-2147217900, u"Provider", u"Syntax error"});
  Add(1);
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{u"-2147217900 Syntax error in AddNewCase"});
  EXPECT_EQ(database.Log().back(), u"RollbackTrans");
  EXPECT_FALSE(database.InTransaction());
}

TEST_F(NewCase, NewCaseTakesAnIdentityOfAnyNumberType) {
  database.AnswerIdentities({automation::Decimal{.lo = 5}, 40.0});
  Add(9);
  EXPECT_EQ(Executed().back(), u"Execute -1: UPDATE Vilnor set Journal_ID = 40 WHERE VilnorId = 5");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(NewCase, NewCaseIsRolledBackWhenTheIdentityIsMissingOrNull) {
  Add(9);
  EXPECT_EQ(Boxes().back(), u"-2147217900 Syntax error in the statement. in AddNewCase");
  database.AnswerIdentities({Null()});
  Add(9);
  EXPECT_EQ(Boxes().back(), u"94 Invalid use of Null in AddNewCase");
  EXPECT_TRUE(database.LogOf(u"CommitTrans").empty());
  EXPECT_FALSE(database.InTransaction());
}

TEST_F(NewCase, FailedIdentityIsInTheTraceAsInItsBox) {
  trace.TurnOn();
  database.FailStatement(fakes::kIdentityStatement, kScriptedFailure);
  Add(9);
  EXPECT_EQ(Boxes().at(0), BoxIn(u"GetScalarValue"));
  EXPECT_EQ(trace.Texts().at(0), "GetScalarValue Failed 1001");
  dialogs.answers = {platform::Answer::None};
  trace.lines.clear();
  Add(9);
  EXPECT_EQ(trace.Texts().at(0), "GetScalarValue Unshown 1001");
}

TEST_F(NewCase, NewCaseWorksWhileTheSharedRecordsetStaysOpen) {
  database.AnswerIdentities({5, 40});
  operations.CaseExistsPID(4711, 9, u"VL-1");
  Add(9);
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(database.Log().back(), u"CommitTrans");
}

}  // namespace
}  // namespace unit
