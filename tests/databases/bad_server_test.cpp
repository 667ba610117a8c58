// Operations on servers that are unreachable, refuse, or are lost: the same result as with bad
// input.
#include <functional>
#include <utility>

#include "databases/bad_input.h"
#include "host/b_vilnor.h"

namespace databases {
namespace {

std::u16string Replaced(std::u16string text, const std::u16string& part,
                        const std::u16string& replacement) {
  const auto found = text.find(part);
  EXPECT_NE(found, std::u16string::npos);
  return text.replace(found, part.size(), replacement);
}

class BadServer : public BadInput {
 protected:
  // What the host sees with the connection string `bad`, and then with a good one.
  void ExpectABoxInBVilnorAndThenABetterDay(
      const std::u16string& bad, const std::u16string& good = GetParam().connectionString) {
    class NoEvents : public exchange::Events {
      void UpdateJournal() override {}
    } events;
    host::BVilnor vilnor(events);
    vilnor.InitVilnor(bad, 1, session.gDbType);
    EXPECT_EQ(vilnor.GetVilnorUserByPID(5012), u"");
    ExpectProvidersBox(u"GetVilnorUserByPID");
    EXPECT_EQ(dialogs.shown.at(0).icon, platform::Icon::Exclamation);
    dialogs.shown.clear();
    vilnor.InitVilnor(good, 1, session.gDbType);
    EXPECT_EQ(vilnor.GetVilnorUserByPID(5012), u"bjorn.ek");
    EXPECT_EQ(Boxes(), Texts());
  }
};

TEST_P(BadServer, UnreachableServerShowsTheProvidersBox) {
  ExpectABoxInBVilnorAndThenABetterDay(
      IsServer() ? Replaced(GetParam().connectionString, u";Server=127.0.0.1;Port=",
                            u";Server=127.0.0.1;Port=1;Elsewhere=")
                 : u"Driver=SQLite3;Database=/no/such/folder/clinic.db");
}

TEST_P(BadServer, UnknownDriverShowsTheProvidersBox) {
  ExpectABoxInBVilnorAndThenABetterDay(u"Driver=No Such Driver;Database=clinic");
}

// The statements that create and drop the users of the tests.
struct Users {
  std::u16string lockedOut;
  std::u16string withPassword;
  std::vector<std::u16string> drop;
};

Users UsersOf(const Product& server) {
  if (server.name == "MariaDB") {
    return {u"CREATE OR REPLACE USER locked_out@'127.0.0.1' ACCOUNT LOCK",
            u"GRANT ALL ON *.* TO with_password@'127.0.0.1' IDENTIFIED BY 'hemligt'",
            {u"DROP USER IF EXISTS locked_out@'127.0.0.1', with_password@'127.0.0.1'"}};
  }
  return {u"CREATE ROLE locked_out NOLOGIN",
          // The test run's own server asks only this role for a password.
          u"CREATE ROLE with_password LOGIN PASSWORD 'hemligt' IN ROLE vilnor",
          {u"DROP ROLE IF EXISTS locked_out", u"DROP ROLE IF EXISTS with_password"}};
}

class LostServer : public BadServer {
 protected:
  void CutOffOtherClients() {
    if (GetParam().name == "MariaDB") {
      KillOtherClients();
    } else {
      Run(u"SELECT pg_terminate_backend(pid, 5000) FROM pg_stat_activity "
          u"WHERE datname = current_database() AND pid <> pg_backend_pid() "
          u"AND backend_type = 'client backend'");
    }
  }
  void DropUsers() {
    for (const auto& statement : users.drop) {
      Run(statement);
    }
  }
  const Users users = UsersOf(GetParam());

 private:
  void KillOtherClients() {
    for (const auto& client : Rows(u"ID",
                                   u"information_schema.PROCESSLIST "
                                   u"WHERE DB = DATABASE() AND ID <> CONNECTION_ID()")) {
      try {
        Run(u"KILL " + client);
      } catch (const automation::AutomationError&) {
        // It has just ended by itself.
      }
    }
  }
};

TEST_P(LostServer, RefusedLoginShowsTheProvidersBox) {
  DropUsers();
  Run(users.lockedOut);
  ExpectABoxInBVilnorAndThenABetterDay(
      Replaced(GetParam().connectionString, u"Uid=vilnor", u"Uid=locked_out"));
  DropUsers();
}

TEST_P(LostServer, WrongPasswordShowsTheProvidersBox) {
  DropUsers();
  Run(users.withPassword);
  const auto loginWith = [](const std::u16string& password) {
    return Replaced(GetParam().connectionString, u"Uid=vilnor",
                    u"Uid=with_password;Pwd=" + password);
  };
  ExpectABoxInBVilnorAndThenABetterDay(loginWith(u"fel"), loginWith(u"hemligt"));
  DropUsers();
}

TEST_P(LostServer, LostServerShowsOneBoxPerOperation) {
  using Operation = std::function<void(db::DBVilnor&)>;
  const std::vector<std::pair<std::u16string, Operation>> operations = {
      {u"DeleteFHP", [](auto& gone) { gone.DeleteFHP(71); }},
      {u"DeleteCase", [](auto& gone) { gone.DeleteCase(u"2072"); }},
      {u"UpdateCaseById", [](auto& gone) { gone.UpdateCaseById(102, u"3072", 1); }},
      {u"UpdateCase", [](auto& gone) { gone.UpdateCase(u"3072", 4712, 1, 9); }},
      {u"GetCaseIdByVilnorId", [](auto& gone) { EXPECT_EQ(gone.GetCaseIdByVilnorId(102), u""); }},
      {u"GetPatientByPID", [](auto& gone) { EXPECT_EQ(gone.GetPatientByPID(4711), nullptr); }}};
  for (const auto& operation : operations) {
    ExpectRefused(operation.first, [&](auto& connected) {
      CutOffOtherClients();
      operation.second(connected);
    });
  }
  ExpectThatANewCaseWorks();
}

TEST_P(LostServer, ServerLostInAnyStepOfATransactionLeavesNothing) {
  const auto before = Written();
  constexpr int kCallsOfANewCase = 7;
  for (int last = 1; last <= kCallsOfANewCase; ++last) {
    SCOPED_TRACE(last);
    dialogs.shown.clear();
    db::RenewGDB();
    database.Watch([&](int step) {
      if (step == last) {
        CutOffOtherClients();
      }
    });
    db::GDB()->AddNewCase(4711, 12, 3, u"VL-9", 77, 1, 5, u"åsa", u"K-9");
    database.BreakNothing();
    db::ReleaseGDB();
    ASSERT_FALSE(Boxes().empty());
    EXPECT_TRUE(Boxes().front().starts_with(u"-2147")) << automation::ToUtf8(Boxes().front());
    EXPECT_TRUE(Boxes().back().ends_with(u" in AddNewCase"));
    EXPECT_EQ(Written(), before);
  }
  ExpectThatANewCaseWorks();
}

class SharedFile : public BadInput {};

TEST_P(SharedFile, FileLockedByAnotherClientShowsTheProvidersBoxAndIsUnchanged) {
  const auto before = Written();
  session.gConnectionParameter += u";Timeout=100";
  Run(u"BEGIN IMMEDIATE");
  Add(u"VL-9", u"åsa");
  ExpectProvidersBox(u"AddNewCase");
  Run(u"ROLLBACK");
  EXPECT_EQ(Written(), before);
  ExpectThatANewCaseWorks();
}

INSTANTIATE_FOR_PRODUCTS(BadServer);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(LostServer);  // without a server to test on
INSTANTIATE_FOR(Servers(), LostServer);
INSTANTIATE_FOR(EmbeddedProducts(), SharedFile);

}  // namespace
}  // namespace databases
