// What the writing operations leave in the host's tables.
#include "databases/clinic.h"

namespace databases {
namespace {

class Links : public Clinic {
 protected:
  std::vector<std::u16string> LinkIds() { return Rows(u"VilnorId", u"Vilnor ORDER BY VilnorId"); }
  std::vector<std::u16string> JournalIds() { return Rows(u"ID", u"Journal ORDER BY ID"); }

  db::DBVilnor operations;
};

using Texts = std::vector<std::u16string>;

TEST_P(Links, LinkOfANewApplicationHasItsIdAndItsJournalLine) {
  operations.AddNewCase(4711, 12, 3, u"VL-9", 77, 1, 5, u"zoë.åhlén", u"2026-077");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(Rows(u"VilnorId,PID,BID,RID,FHP_ID,CaseId,CaseType,Journal_ID,StatusCode,VilnorUser,"
                 u"RegDate",
                 u"Vilnor WHERE PID = 4711"),
            Texts{u"104|4711|12|3|77|VL-9|1|505|5|zoë.åhlén|2026-11-16 14:05:00"});
  EXPECT_EQ(
      Rows(u"ID,PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert,RefTBID", u"Journal WHERE ID > 504"),
      Texts{u"505|4711|Förhandsprövning, ärendenr: 2026-077 överförd till Vilnor Link ref.nr "
            u"VL-9|12|3|2026-11-16 14:05:00|22302|U|0|104"});
}

TEST_P(Links, LinkOfANewCaseHasNoApplication) {
  operations.AddNewCase(4711, 12, 3, u"VL-9", 4711, 9, 5, u"zoë.åhlén");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(Rows(u"VilnorId,FHP_ID,CaseType,Journal_ID", u"Vilnor WHERE PID = 4711"),
            Texts{u"104|NULL|9|505"});
  EXPECT_EQ(Rows(u"Tekst,RefTBID", u"Journal WHERE ID > 504"),
            Texts{u"Ärende upprättat i Vilnor Link ref.nr VL-9|104"});
}

TEST_P(Links, LinkOfEachNewCaseHasItsOwnJournalLine) {
  operations.AddNewCase(4711, 12, 3, u"VL-9", 77, 1, 5, u"x");
  operations.AddNewCase(4713, 13, 4, u"VL-10", 4713, 9, 5, u"y");
  EXPECT_EQ(Rows(u"VilnorId,Journal_ID", u"Vilnor WHERE VilnorId > 103 ORDER BY VilnorId"),
            (Texts{u"104|505", u"105|506"}));
  EXPECT_EQ(Rows(u"ID,RefTBID", u"Journal WHERE ID > 504 ORDER BY ID"),
            (Texts{u"505|104", u"506|105"}));
}

TEST_P(Links, DeleteByApplicationDeletesTheLinkAndItsJournalLine) {
  operations.DeleteFHP(71);
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(LinkIds(), (Texts{u"102", u"103"}));
  EXPECT_EQ(JournalIds(), (Texts{u"502", u"503", u"504"}));
}

TEST_P(Links, DeleteByTrimmedCaseIdDeletesTheLinkAndItsJournalLine) {
  operations.DeleteCase(u"  2073 ");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(LinkIds(), (Texts{u"101", u"102"}));
  EXPECT_EQ(JournalIds(), (Texts{u"501", u"502", u"504"}));
}

TEST_P(Links, LinksOfTheSameKeyAreDeletedOnePerCallFromTheFirst) {
  Run(u"INSERT INTO Journal (ID, PID) VALUES (600, 4712), (601, 4714)");
  Run(u"INSERT INTO Vilnor (PID, CaseId, FHP_ID, CaseType, Journal_ID) "
      u"VALUES (4712, '2071', 71, 1, 600), (4714, '2073', NULL, 9, 601)");
  operations.DeleteFHP(71);
  operations.DeleteCase(u"2073");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(LinkIds(), (Texts{u"102", u"104", u"105"}));
  EXPECT_EQ(JournalIds(), (Texts{u"502", u"504", u"600", u"601"}));
}

TEST_P(Links, DeleteOfAMissingLinkShowsNoBoxAndLeavesTheRecordsetOpen) {
  const auto before = Written();
  operations.DeleteFHP(5);
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(Written(), before);
  operations.DeleteCase(u"2071");
  EXPECT_EQ(Boxes(),
            Texts{u"3705 Operation is not allowed when the object is open. in DeleteCase"});
  EXPECT_EQ(Written(), before);
}

TEST_P(Links, UpdateSetsTheNumberAndReplacesTheTextAfterTheMark) {
  operations.UpdateCaseById(102, u"3072", 7);
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(Rows(u"CaseId,StatusCode", u"Vilnor WHERE VilnorId = 102"), Texts{u"3072|7"});
  EXPECT_EQ(Only(u"Tekst", u"Journal WHERE ID = 502"),
            u"Ärende upprättat i Vilnor Link ref.nr 3072");
}

TEST_P(Links, UpdateOfAJournalTextWithoutTheMarkShowsError5AndChangesNothing) {
  const auto before = Written();
  operations.UpdateCaseById(101, u"3071", 7);
  operations.UpdateCase(u"3071", 71, 7, 1);
  EXPECT_EQ(Boxes(), (Texts{u"5 Invalid procedure call or argument in UpdateCaseById",
                            u"5 Invalid procedure call or argument in UpdateCase"}));
  EXPECT_EQ(Written(), before);
}

TEST_P(Links, LinkOfAnApplicationIsUpdatedByItsId) {
  Run(u"UPDATE Journal SET Tekst = 'ärende !2071' WHERE ID = 501");
  operations.UpdateCase(u"3071", 71, 1, 1);
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(Rows(u"VilnorId,CaseId,StatusCode", u"Vilnor WHERE PID = 4712 ORDER BY VilnorId"),
            (Texts{u"101|3071|1", u"102|2072|5"}));
  EXPECT_EQ(Only(u"Tekst", u"Journal WHERE ID = 501"), u"ärende 3071");
}

TEST_P(Links, UpdateByPatientChangesAllLinksButOneJournalLine) {
  Run(u"INSERT INTO Journal (ID, PID, Tekst) VALUES (600, 4712, 'ref.nr !2074')");
  Run(u"INSERT INTO Vilnor (PID, CaseId, CaseType, Journal_ID, StatusCode) "
      u"VALUES (4712, '2074', 9, 600, 5)");
  operations.UpdateCase(u"3072", 4712, 1, 9);
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(Rows(u"VilnorId,CaseId,StatusCode", u"Vilnor WHERE PID = 4712 ORDER BY VilnorId"),
            (Texts{u"101|2071|5", u"102|3072|1", u"104|3072|1"}));
  EXPECT_EQ(Rows(u"Tekst", u"Journal WHERE ID IN (502, 600) ORDER BY ID"),
            (Texts{u"Ärende upprättat i Vilnor Link ref.nr 3072", u"ref.nr !2074"}));
}

TEST_P(Links, UpdateOfAnyOtherCaseTypeChangesNoLink) {
  const auto before = Written();
  operations.UpdateCase(u"3072", 4712, 1, 2);
  EXPECT_EQ(Written(), before);
  EXPECT_TRUE(Boxes().empty());
}

TEST_P(Links, UpdateOfAMissingLinkShowsThatThereIsNoRecord) {
  const auto before = Written();
  operations.UpdateCaseById(5, u"3072", 1);
  EXPECT_EQ(Boxes(), Texts{u"3021 Either BOF or EOF is True, or the current record has been "
                           u"deleted. Requested operation requires a current record. in "
                           u"UpdateCaseById"});
  EXPECT_EQ(Written(), before);
}

TEST_P(Links, NewCaseOfAnyOtherTypeExecutesTheLastStatementAgain) {
  operations.AddNewCase(4713, 13, 4, u"VL-8", 4713, 9, 5, u"x");  // gives out the first keys
  operations.AddNewVilnorUser(4711, u"'åsa'");
  operations.AddNewCase(4711, 12, 3, u"VL-9", 77, 4, 5, u"x");
  EXPECT_TRUE(Boxes().empty());
  EXPECT_EQ(Rows(u"PID,UserName", u"VilnorPasient WHERE PID = 4711"),
            (Texts{u"4711|åsa", u"4711|åsa"}));
  // The journal line has no text. Its link gets the last key that the database generated: SQLite
  // counts the rows of all tables, the servers only keys, the last of which went to the first
  // case's line.
  EXPECT_EQ(Rows(u"Tekst,RefTBID", u"Journal WHERE PID = 4711 AND ID > 504"),
            Texts{IsServer() ? u"|505" : u"|6"});
  EXPECT_EQ(Rows(u"VilnorId", u"Vilnor WHERE PID = 4711"), Texts());
}

TEST_P(Links, NewCaseOfAnyOtherTypeIsRefusedAsTheThreadsFirstOperation) {
  const auto before = Written();
  operations.AddNewCase(4711, 12, 3, u"VL-9", 77, 2, 5, u"x");
  ExpectProvidersBox(u"AddNewCase");
  EXPECT_EQ(Written(), before);
}

INSTANTIATE_FOR_PRODUCTS(Links);

}  // namespace
}  // namespace databases
