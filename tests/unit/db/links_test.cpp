// Finding, deleting and updating link records.
#include "fixture.h"

namespace unit {
namespace {

using automation::Null;
using db::DBVilnor;

const std::u16string kByFhp = u"SELECT VilnorID, Journal_ID from Vilnor where FHP_ID = 77";
const std::u16string kLinkById = u"SELECT Journal_ID from Vilnor Where VilnorID= 5";
const std::u16string kJournal40 = u"SELECT Tekst from Journal Where ID = 40";
const std::u16string kInvalidCall = u"5 Invalid procedure call or argument in ";

class Links : public DbTest {
 protected:
  std::vector<std::u16string> Executed() const { return database.LogOf(u"Execute"); }
  void AnswerJournalText(const automation::Value& text) {
    database.Answer(kLinkById, {{u"Journal_ID"}, {{40}}});
    database.Answer(kJournal40, {{u"Tekst"}, {{text}}});
  }

  DBVilnor operations;
};

TEST_F(Links, DeleteWithoutALinkRunsWith0CommitsAndLeavesTheRecordsetOpen) {
  operations.DeleteFHP(77);
  EXPECT_EQ(Executed(),
            (std::vector<std::u16string>{u"Execute -1: Delete from Journal where id = 0",
                                         u"Execute -1: Delete from Vilnor where Vilnorid = 0"}));
  EXPECT_EQ(database.Log().back(), u"CommitTrans");
  EXPECT_TRUE(Boxes().empty());
  operations.CaseExists(77, 1);
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{kAlreadyOpen + u"CaseExists"});
}

TEST_F(Links, DeleteTrimsTheCaseIdAtBothEndsOnly) {
  operations.DeleteCase(u"  VL 1  ");
  EXPECT_TRUE(database.LogOf(u"Recordset.Open").at(0).ends_with(u"where CaseId = 'VL 1'"));
}

TEST_F(Links, DeletePassesAQuoteInTheCaseIdOnUnescaped) {
  operations.DeleteCase(u"VL'1");
  EXPECT_TRUE(database.LogOf(u"Recordset.Open").at(0).ends_with(u"where CaseId = 'VL'1'"));
}

TEST_F(Links, DeleteFailsOnANullKeyBeforeATransactionAndStillIssuesTheRollback) {
  database.Answer(kByFhp, {{u"VilnorID", u"Journal_ID"}, {{5, Null()}}});
  operations.DeleteFHP(77);
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{u"94 Invalid use of Null in DeleteFHP"})
      << "the rollback's own error is dropped";
  EXPECT_EQ(database.Log().back(), u"RollbackTrans");
  EXPECT_TRUE(Executed().empty());
}

TEST_F(Links, DeleteReportsALeftOpenRecordsetAndIssuesTheRollback) {
  operations.CaseExists(77, 1);
  operations.DeleteCase(u"VL-1");
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{kAlreadyOpen + u"DeleteCase"});
  EXPECT_EQ(database.Log().back(), u"RollbackTrans");
}

TEST_F(Links, ExistByPatientUsesTheExactCaseId) {
  operations.CaseExistsPID(1, 9, u" VL'1 ");
  EXPECT_TRUE(database.Log().back().ends_with(u"and CaseId = ' VL'1 '"));
}

TEST_F(Links, ExistGivesFalseWithoutARow) {
  EXPECT_FALSE(operations.CaseExists(77, 9));
  EXPECT_TRUE(database.Log().back().ends_with(u"WHERE FHP_ID = 77 and CaseType = 9"));
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(Links, UpdateReplacesTheTextFromTheFirstExclamationMarkOn) {
  AnswerJournalText(u"Ärende ref.nr !VL-1! gammal");
  operations.UpdateCaseById(5, u"2002", 7);
  EXPECT_EQ(Executed().at(1),
            u"Execute -1: Update Journal SET Tekst = 'Ärende ref.nr 2002' Where ID = 40");
}

TEST_F(Links, UpdateReplacesTheWholeTextWhenItBeginsWithTheMark) {
  AnswerJournalText(u"!");
  operations.UpdateCaseById(5, u"2002", 7);
  EXPECT_EQ(Executed().at(1), u"Execute -1: Update Journal SET Tekst = '2002' Where ID = 40");
}

TEST_F(Links, UpdateOfATextWithoutAMarkShowsError5AndChangesNothing) {
  for (const auto* text : {u"Ärende upprättat i Vilnor Link ref.nr VL-1", u""}) {
    dialogs.shown.clear();
    AnswerJournalText(text);
    operations.UpdateCaseById(5, u"2002", 7);
    EXPECT_EQ(Boxes(), std::vector<std::u16string>{kInvalidCall + u"UpdateCaseById"});
    EXPECT_TRUE(Executed().empty());
    EXPECT_EQ(database.Log().back(), u"RollbackTrans");
  }
}

TEST_F(Links, UpdateByHostKeyNamesItselfInError5) {
  database.Answer(u"SELECT Journal_ID from Vilnor Where PID= 4711 AND CaseType = 9",
                  {{u"Journal_ID"}, {{40}}});
  database.Answer(kJournal40, {{u"Tekst"}, {{u"Ingen"}}});
  operations.UpdateCase(u"2002", 4711, 1, 9);
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{kInvalidCall + u"UpdateCase"});
}

TEST_F(Links, UpdateOfAMissingLinkShowsThatThereIsNoRecordAndLeavesTheRecordsetOpen) {
  operations.UpdateCaseById(5, u"2002", 7);
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{
                         u"3021 Either BOF or EOF is True, or the current record has been deleted. "
                         u"Requested operation requires a current record. in UpdateCaseById"});
  EXPECT_EQ(database.Log().back(), u"RollbackTrans");
  operations.CaseExists(77, 1);
  EXPECT_EQ(Boxes().back(), kAlreadyOpen + u"CaseExists");
}

TEST_F(Links, UpdateOfALinkWithoutItsJournalLineShowsThatThereIsNoRecord) {
  database.Answer(kLinkById, {{u"Journal_ID"}, {{40}}});
  operations.UpdateCaseById(5, u"2002", 7);
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_TRUE(Boxes()[0].starts_with(u"3021 "));
  EXPECT_TRUE(Executed().empty());
}

TEST_F(Links, UpdateOfANullJournalTextShowsInvalidUseOfNull) {
  AnswerJournalText(Null());
  operations.UpdateCaseById(5, u"2002", 7);
  EXPECT_EQ(Boxes(), std::vector<std::u16string>{u"94 Invalid use of Null in UpdateCaseById"});
}

TEST_F(Links, UpdatePutsTheCaseIdIntoTheLinkWithoutQuotes) {
  AnswerJournalText(u"ref!1");
  operations.UpdateCaseById(5, u"VL-2", -1);
  EXPECT_EQ(Executed().at(0),
            u"Execute -1: Update Vilnor SET CaseId = VL-2, StatusCode = -1 Where VilnorId= 5");
}

TEST_F(Links, UpdateOfAnyOtherCaseTypeDoesNothing) {
  database.ClearLog();
  for (const std::int32_t type : {0, 2, 8, 10, -1}) {
    operations.UpdateCase(u"2002", 77, 1, type);
  }
  EXPECT_TRUE(database.Log().empty());
  EXPECT_TRUE(Boxes().empty());
}

}  // namespace
}  // namespace unit
