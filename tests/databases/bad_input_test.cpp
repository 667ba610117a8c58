// What the operations make of values, tables and servers that are not as they should be: a box with
// the provider's number and text, nothing half done, and the next operation works once the cause is
// gone.
#include "automation/text.h"
#include "databases/clinic.h"
#include "host/b_vilnor.h"

namespace databases {
namespace {

using Texts = std::vector<std::u16string>;

std::u16string Replaced(std::u16string text, const std::u16string& part,
                        const std::u16string& replacement) {
  const auto found = text.find(part);
  EXPECT_NE(found, std::u16string::npos);
  return text.replace(found, part.size(), replacement);
}

class BadInput : public Clinic {
 protected:
  // Each operation has a fresh object, as BVilnor gives it one.
  template <class Operation>
  auto Fresh(Operation operation) {
    const db::DBVilnor* const gDB = db::RenewGDB().get();
    EXPECT_NE(gDB, nullptr);
    auto result = operation(*db::GDB());
    db::ReleaseGDB();
    return result;
  }
  void Add(const std::u16string& caseId, const std::u16string& user) {
    db::RenewGDB()->AddNewCase(4711, 12, 3, caseId, 77, 1, 5, user, u"K-9");
    db::ReleaseGDB();
  }
  std::u16string UserOf(std::int32_t pid) {
    return Fresh([&](auto& operations) { return operations.GetVilnorUserByPID(pid); });
  }
  void ExpectThatANewCaseWorks() {
    dialogs.shown.clear();
    Add(u"VL-9", u"åsa");
    EXPECT_EQ(Boxes(), Texts());
    EXPECT_EQ(Rows(u"CaseId", u"Vilnor WHERE PID = 4711"), Texts{u"VL-9"});
  }
};

TEST_P(BadInput, AQuoteInACaseIdBreaksTheInsertAndIsRolledBack) {
  const auto before = Written();
  Add(u"VL'9", u"åsa");
  ExpectProvidersBox(u"AddNewCase");
  EXPECT_EQ(Written(), before);
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, AQuoteInAUserNameBreaksTheInsertAndIsRolledBack) {
  const auto before = Written();
  Add(u"VL-9", u"d'Arc");
  ExpectProvidersBox(u"AddNewCase");
  EXPECT_EQ(Written(), before);
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, AQuoteInASearchedCaseIdShowsTheProvidersBox) {
  const auto before = Written();
  db::RenewGDB()->DeleteCase(u"VL'9");
  db::ReleaseGDB();
  ExpectProvidersBox(u"DeleteCase");
  dialogs.shown.clear();
  EXPECT_FALSE(Fresh([](auto& operations) { return operations.CaseExistsPID(1, 9, u"'"); }));
  ExpectProvidersBox(u"CaseExistsPID");
  EXPECT_EQ(Written(), before);
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, ACaseIdThatIsNoNumberBreaksTheUnquotedUpdateAndIsRolledBack) {
  const auto before = Written();
  db::RenewGDB()->UpdateCaseById(102, u"VL 9", 1);
  db::ReleaseGDB();
  ExpectProvidersBox(u"UpdateCaseById");
  EXPECT_EQ(Written(), before);
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, ANameOfTenThousandCharactersIsStoredWholeOrNotAtAll) {
  const std::u16string name(10000, u'ö');
  const auto before = Written();
  Add(u"VL-8", name);
  if (IsPostgresql()) {
    ExpectProvidersBox(u"AddNewCase");
    EXPECT_EQ(Written(), before);
  } else {
    EXPECT_EQ(Boxes(), Texts());
    EXPECT_EQ(Only(u"VilnorUser", u"Vilnor WHERE PID = 4711"), name);
    Run(u"DELETE FROM Vilnor WHERE PID = 4711");
  }
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, AMappedNameOfTenThousandCharactersIsReadWholeOrNotStored) {
  const std::u16string name(10000, u'å');
  db::RenewGDB()->AddNewVilnorUser(4711, u"'" + name + u"'");
  db::ReleaseGDB();
  if (IsPostgresql()) {
    ExpectProvidersBox(u"AddNewVilnorUser");
    EXPECT_EQ(UserOf(4711), u"");
  } else {
    EXPECT_EQ(UserOf(4711), name);
  }
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, ADatabaseTypeWithoutDatesIsRefusedAndRolledBack) {
  const auto before = Written();
  const auto type = session.gDbType;
  session.gDbType = 3;
  Add(u"VL-9", u"åsa");
  ExpectProvidersBox(u"AddNewCase");
  EXPECT_EQ(Written(), before);
  session.gDbType = type;
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, AMissingTableShowsTheProvidersBox) {
  Run(u"ALTER TABLE VilnorPasient RENAME TO Elsewhere");
  EXPECT_EQ(UserOf(5012), u"");
  ExpectProvidersBox(u"GetVilnorUserByPID");
  Run(u"ALTER TABLE Elsewhere RENAME TO VilnorPasient");
  EXPECT_EQ(UserOf(5012), u"bjorn.ek");
}

TEST_P(BadInput, AMissingJournalRollsTheNewLinkBack) {
  Run(u"ALTER TABLE Journal RENAME TO Elsewhere");
  Add(u"VL-9", u"åsa");
  ExpectProvidersBox(u"AddNewCase");
  Run(u"ALTER TABLE Elsewhere RENAME TO Journal");
  EXPECT_EQ(Rows(u"CaseId", u"Vilnor WHERE PID = 4711"), Texts());
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, AMissingColumnShowsTheProvidersBox) {
  const auto town = [](auto& operations) { return operations.GetCityByPostnr(41301); };
  Run(u"ALTER TABLE Postadresseregister RENAME COLUMN Poststedsnavn TO Ort");
  EXPECT_EQ(Fresh(town), u"");
  ExpectProvidersBox(u"GetCityByPostnr");
  Run(u"ALTER TABLE Postadresseregister RENAME COLUMN Ort TO Poststedsnavn");
  EXPECT_EQ(Fresh(town), u"Göteborg");
}

TEST_P(BadInput, ANullWhereATextIsTakenShowsInvalidUseOfNull) {
  const auto caseId = [](auto& operations) { return operations.GetCaseIdByVilnorId(102); };
  Run(u"UPDATE Vilnor SET CaseId = NULL WHERE VilnorId = 102");
  EXPECT_EQ(Fresh(caseId), u"");
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in GetCaseIdByVilnorId"});
  Run(u"UPDATE Vilnor SET CaseId = '2072' WHERE VilnorId = 102");
  EXPECT_EQ(Fresh(caseId), u"2072");
}

TEST_P(BadInput, ANullJournalTextLeavesTheLinkAsItIs) {
  Run(u"UPDATE Journal SET Tekst = NULL WHERE ID = 502");
  const auto before = Written();
  db::RenewGDB()->UpdateCaseById(102, u"3072", 1);
  db::ReleaseGDB();
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in UpdateCaseById"});
  EXPECT_EQ(Written(), before);
  ExpectThatANewCaseWorks();
}

TEST_P(BadInput, ANullJournalIdDeletesNothing) {
  Run(u"UPDATE Vilnor SET Journal_ID = NULL WHERE VilnorId = 101");
  const auto before = Written();
  db::RenewGDB()->DeleteFHP(71);
  db::ReleaseGDB();
  EXPECT_EQ(Boxes(), Texts{u"94 Invalid use of Null in DeleteFHP"});
  EXPECT_EQ(Written(), before);
}

class BadServer : public BadInput {
 protected:
  // What the host sees while the connection string is `bad`, and then with the right one.
  void ExpectABoxInBVilnorAndThenABetterDay(const std::u16string& bad) {
    class NoEvents : public host::Events {
      void UpdateJournal() override {}
    } events;
    host::BVilnor vilnor(events);
    vilnor.InitVilnor(bad, 1, session.gDbType);
    EXPECT_EQ(vilnor.GetVilnorUserByPID(5012), u"");
    ExpectProvidersBox(u"GetVilnorUserByPID");
    EXPECT_EQ(dialogs.shown.at(0).icon, platform::Icon::Exclamation);
    dialogs.shown.clear();
    vilnor.InitVilnor(GetParam().connectionString, 1, session.gDbType);
    EXPECT_EQ(vilnor.GetVilnorUserByPID(5012), u"bjorn.ek");
    EXPECT_EQ(Boxes(), Texts());
  }
};

TEST_P(BadServer, ThatIsNotThereShowsTheProvidersBox) {
  ExpectABoxInBVilnorAndThenABetterDay(
      IsPostgresql() ? Replaced(GetParam().connectionString, u";Server=127.0.0.1;Port=",
                                u";Server=127.0.0.1;Port=1;Elsewhere=")
                     : u"Driver=SQLite3;Database=/no/such/folder/clinic.db");
}

TEST_P(BadServer, OfAnUnknownDriverShowsTheProvidersBox) {
  ExpectABoxInBVilnorAndThenABetterDay(u"Driver=No Such Driver;Database=clinic");
}

class LostServer : public BadServer {};

TEST_P(LostServer, ThatRefusesTheLoginShowsTheProvidersBox) {
  Run(u"DROP ROLE IF EXISTS locked_out");
  Run(u"CREATE ROLE locked_out NOLOGIN");
  ExpectABoxInBVilnorAndThenABetterDay(
      Replaced(GetParam().connectionString, u"Uid=vilnor", u"Uid=locked_out"));
  Run(u"DROP ROLE locked_out");
}

TEST_P(LostServer, ThatGoesAwayInAnyStepOfATransactionLeavesNothing) {
  const auto before = Written();
  constexpr int kCallsOfANewCase = 7;
  for (int last = 1; last <= kCallsOfANewCase; ++last) {
    SCOPED_TRACE(last);
    dialogs.shown.clear();
    db::RenewGDB();
    database.Watch([&](int step) {
      if (step == last) {
        Rows(u"pg_terminate_backend(pid, 5000)",
             u"pg_stat_activity WHERE datname = current_database() AND pid <> pg_backend_pid() "
             u"AND backend_type = 'client backend'");
      }
    });
    db::GDB()->AddNewCase(4711, 12, 3, u"VL-9", 77, 1, 5, u"åsa", u"K-9");
    database.BreakNothing();
    db::ReleaseGDB();
    ASSERT_FALSE(Boxes().empty());
    EXPECT_TRUE(Boxes().back().ends_with(u" in AddNewCase"));
    EXPECT_EQ(Written(), before);
  }
  ExpectThatANewCaseWorks();
}

class SharedFile : public BadInput {};

TEST_P(SharedFile, ThatAnotherClientHasLockedShowsTheProvidersBoxAndLeavesNothing) {
  const auto before = Written();
  session.gConnectionParameter += u";Timeout=100";
  Run(u"BEGIN IMMEDIATE");
  Add(u"VL-9", u"åsa");
  ExpectProvidersBox(u"AddNewCase");
  Run(u"ROLLBACK");
  EXPECT_EQ(Written(), before);
  ExpectThatANewCaseWorks();
}

INSTANTIATE_FOR_PRODUCTS(BadInput);
INSTANTIATE_FOR_PRODUCTS(BadServer);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LostServer);  // without a server to test on
INSTANTIATE_FOR(Servers(), LostServer);
INSTANTIATE_FOR(EmbeddedProducts(), SharedFile);

}  // namespace
}  // namespace databases
