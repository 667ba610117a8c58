// Operations on bad values and tables: a box with the provider's number and text, nothing half
// done, and the next operation works once the cause is gone.
#include "databases/bad_input.h"

#include "automation/text.h"

namespace databases {
namespace {

TEST_P(BadInput, QuoteInAnyTextOfANewCaseBreaksItsInsertAndIsRolledBack) {
  const auto add = [](const char16_t* caseId, const char16_t* user, const char16_t* kestraCaseId) {
    return [=](auto& operations) {
      operations.AddNewCase(4711, 12, 3, caseId, 77, 1, 5, user, kestraCaseId);
    };
  };
  ExpectRefused(u"AddNewCase", add(u"VL'9", u"åsa", u"K-9"));
  ExpectRefused(u"AddNewCase", add(u"VL-9", u"d'Arc", u"K-9"));
  // Only the journal line has this value. The link already exists and is rolled back.
  ExpectRefused(u"AddNewCase", add(u"VL-9", u"åsa", u"K'9"));
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, QuoteInASearchedCaseIdShowsTheProvidersBox) {
  ExpectRefused(u"DeleteCase", [](auto& operations) { operations.DeleteCase(u"VL'9"); });
  EXPECT_FALSE(Fresh([](auto& operations) { return operations.CaseExistsPID(1, 9, u"'"); }));
  ExpectProvidersBox(u"CaseExistsPID");
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, NonNumericCaseIdBreaksTheUnquotedUpdateAndIsRolledBack) {
  for (const auto* caseId : {u"VL 9", u"30'72"}) {
    SCOPED_TRACE(automation::ToUtf8(caseId));
    ExpectRefused(u"UpdateCaseById",
                  [&](auto& operations) { operations.UpdateCaseById(102, caseId, 1); });
    ExpectRefused(u"UpdateCase",
                  [&](auto& operations) { operations.UpdateCase(caseId, 4712, 1, 9); });
  }
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, QuoteInTheJournalTextRollsTheLinksUpdateBack) {
  Run(u"UPDATE Journal SET Tekst = 'O''Brien !2072' WHERE ID = 502");
  ExpectRefused(u"UpdateCaseById",
                [](auto& operations) { operations.UpdateCaseById(102, u"3072", 1); });
  ExpectRefused(u"UpdateCase",
                [](auto& operations) { operations.UpdateCase(u"3072", 4712, 1, 9); });
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, QuoteInAMappedNameBreaksTheUnquotedStatement) {
  ExpectRefused(u"AddNewVilnorUser",
                [](auto& operations) { operations.AddNewVilnorUser(4711, u"o'neil"); });
  // For a patient with a user, and for one without.
  for (const int pid : {5012, 4711}) {
    ExpectRefused(u"AddNewVilnorUser",
                  [&](auto& operations) { operations.UpdateVilnorUser(pid, u"o'neil"); });
  }
}

TEST_P(BadInput, NameOfTenThousandCharactersIsStoredCompletelyOrNotAtAll) {
  const std::u16string name(10000, u'ö');
  const auto before = Written();
  Add(u"VL-8", name);
  if (IsServer()) {
    ExpectProvidersBox(u"AddNewCase");
    EXPECT_EQ(Written(), before);
  } else {
    EXPECT_EQ(Boxes(), Texts());
    EXPECT_EQ(Only(u"VilnorUser", u"Vilnor WHERE PID = 4711"), name);
    Run(u"DELETE FROM Vilnor WHERE PID = 4711");
  }
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, CaseIdOfTenThousandCharactersIsStoredCompletelyOrNotAtAll) {
  const std::u16string caseId(10000, u'7');
  if (IsServer()) {
    ExpectRefused(u"AddNewCase", [&](auto& operations) {
      operations.AddNewCase(4711, 12, 3, caseId, 4711, 9, 5, u"åsa");
    });
  } else {
    Add(caseId, u"åsa");
    EXPECT_EQ(Boxes(), Texts());
    EXPECT_EQ(Only(u"CaseId", u"Vilnor WHERE PID = 4711"), caseId);
    EXPECT_TRUE(Only(u"Tekst", u"Journal WHERE ID = 505").ends_with(u" ref.nr " + caseId));
    Run(u"DELETE FROM Vilnor WHERE PID = 4711");
  }
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, HostsCaseNumberOfTenThousandCharactersIsStoredCompletely) {
  const std::u16string kestraCaseId(10000, u'Ö');
  Add(u"VL-9", u"åsa", kestraCaseId);
  EXPECT_EQ(Boxes(), Texts());
  EXPECT_EQ(
      Only(u"Tekst", u"Journal WHERE RefTBID = 104"),
      u"Förhandsprövning, ärendenr: " + kestraCaseId + u" överförd till Vilnor Link ref.nr VL-9");
}

TEST_P(BadInput, MappedNameOfTenThousandCharactersIsReadCompletelyOrNotStored) {
  const std::u16string name(10000, u'å');
  db::RenewGDB()->AddNewVilnorUser(4711, u"'" + name + u"'");
  db::ReleaseGDB();
  if (IsServer()) {
    ExpectProvidersBox(u"AddNewVilnorUser");
    EXPECT_EQ(UserOf(4711), u"");
  } else {
    EXPECT_EQ(UserOf(4711), name);
  }
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, DatabaseTypeWithoutDatesIsRefusedAndRolledBack) {
  const auto before = Written();
  const auto type = session.gDbType;
  session.gDbType = 3;
  Add(u"VL-9", u"åsa");
  ExpectProvidersBox(u"AddNewCase");
  EXPECT_EQ(Written(), before);
  session.gDbType = type;
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, MissingTableShowsTheProvidersBox) {
  Run(u"ALTER TABLE VilnorPasient RENAME TO Elsewhere");
  EXPECT_EQ(UserOf(5012), u"");
  ExpectProvidersBox(u"GetVilnorUserByPID");
  Run(u"ALTER TABLE Elsewhere RENAME TO VilnorPasient");
  EXPECT_EQ(UserOf(5012), u"bjorn.ek");
}

TEST_P(BadInput, MissingJournalRollsTheNewLinkBack) {
  Run(u"ALTER TABLE Journal RENAME TO Elsewhere");
  Add(u"VL-9", u"åsa");
  ExpectProvidersBox(u"AddNewCase");
  Run(u"ALTER TABLE Elsewhere RENAME TO Journal");
  EXPECT_EQ(Rows(u"CaseId", u"Vilnor WHERE PID = 4711"), Texts());
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, MissingColumnShowsTheProvidersBox) {
  const auto town = [](auto& operations) { return operations.GetCityByPostnr(41301); };
  Run(u"ALTER TABLE Postadresseregister RENAME COLUMN Poststedsnavn TO Ort");
  EXPECT_EQ(Fresh(town), u"");
  ExpectProvidersBox(u"GetCityByPostnr");
  Run(u"ALTER TABLE Postadresseregister RENAME COLUMN Ort TO Poststedsnavn");
  EXPECT_EQ(Fresh(town), u"Göteborg");
}

TEST_P(BadInput, MissingColumnOfTheLinkRefusesTheNewCase) {
  const auto before = Written();
  Run(u"ALTER TABLE Vilnor RENAME COLUMN VilnorUser TO Elsewhere");
  Add(u"VL-9", u"åsa");
  ExpectProvidersBox(u"AddNewCase");
  Run(u"ALTER TABLE Vilnor RENAME COLUMN Elsewhere TO VilnorUser");
  EXPECT_EQ(Written(), before);
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, MissingTableOfApplicationsGivesNothing) {
  const auto application = [](auto& operations) { return operations.GetFHPById(77); };
  Run(u"ALTER TABLE SEPrerequest RENAME TO Elsewhere");
  EXPECT_EQ(Fresh(application), nullptr);
  ExpectProvidersBox(u"GetFHPById");
  Run(u"ALTER TABLE Elsewhere RENAME TO SEPrerequest");
  EXPECT_NE(Fresh(application), nullptr);
}

TEST_P(BadInput, NullForATextShowsInvalidUseOfNull) {
  const auto caseId = [](auto& operations) { return operations.GetCaseIdByVilnorId(102); };
  const auto town = [](auto& operations) { return operations.GetCityByPostnr(41301); };
  Run(u"UPDATE Vilnor SET CaseId = NULL WHERE VilnorId = 102");
  Run(u"UPDATE Postadresseregister SET Poststedsnavn = NULL WHERE Postnr = '41301'");
  Run(u"UPDATE VilnorPasient SET UserName = NULL WHERE PID = 5012");
  EXPECT_EQ(Fresh(caseId), u"");
  EXPECT_EQ(Fresh(town), u"");
  EXPECT_EQ(UserOf(5012), u"");
  EXPECT_EQ(Boxes(), (Texts{u"94 Invalid use of Null in GetCaseIdByVilnorId",
                            u"94 Invalid use of Null in GetCityByPostnr",
                            u"94 Invalid use of Null in GetVilnorUserByPID"}));
  Run(u"UPDATE Vilnor SET CaseId = '2072' WHERE VilnorId = 102");
  EXPECT_EQ(Fresh(caseId), u"2072");
}

TEST_P(BadInput, NullForAPatientsNumberShowsInvalidUseOfNull) {
  Run(u"ALTER TABLE Pasient RENAME TO Elsewhere");
  Run(u"CREATE TABLE Pasient (ID integer, Code1 integer)");
  Run(u"INSERT INTO Pasient (Code1) VALUES (5)");
  EXPECT_EQ(Fresh([](auto& operations) { return operations.GetVilnorUserByCode1(5); }), u"");
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in GetVilnorUserByCode1"});
  Run(u"DROP TABLE Pasient");
  Run(u"ALTER TABLE Elsewhere RENAME TO Pasient");
}

TEST_P(BadInput, NullJournalTextLeavesTheLinkUnchanged) {
  Run(u"UPDATE Journal SET Tekst = NULL WHERE ID = 502");
  const auto before = Written();
  db::RenewGDB()->UpdateCaseById(102, u"3072", 1);
  db::ReleaseGDB();
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in UpdateCaseById"});
  EXPECT_EQ(Written(), before);
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, NullJournalIdDeletesNothing) {
  Run(u"UPDATE Vilnor SET Journal_ID = NULL WHERE VilnorId = 101");
  const auto before = Written();
  db::RenewGDB()->DeleteFHP(71);
  db::ReleaseGDB();
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in DeleteFHP"});
  EXPECT_EQ(Written(), before);
}

INSTANTIATE_FOR_PRODUCTS(BadInput);

}  // namespace
}  // namespace databases
