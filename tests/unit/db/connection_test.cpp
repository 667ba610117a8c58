// The thread's shared connection and which object keeps it open.

#include "fakes/another_thread.h"
#include "fixture.h"

namespace unit {
namespace {

using db::DBVilnor;
using fakes::ErrorNumberOf;

const fakes::Rows kOneUser = {{u"UserName"}, {{u"åsa"}}};

class SharedConnection : public DbTest {
 protected:
  SharedConnection() {
    database.Answer(u"SELECT UserName from VilnorPasient where PID = 1", kOneUser);
  }
};

TEST_F(SharedConnection, NewDBVilnorOpensTheConnectionWithTheSessionsExactString) {
  session.gConnectionParameter = u"Provider=Åbo; Data Source=\"x;y\"";
  const DBVilnor operations;
  EXPECT_EQ(database.Log(),
            (std::vector<std::u16string>{
                u"Connection.ConnectionString = Provider=Åbo; Data Source=\"x;y\"",
                u"Connection.Open '', '', '', -1", u"Recordset.CursorLocation = 3"}));
  EXPECT_EQ(database.OpenConnections(), 1);
}

TEST_F(SharedConnection, DBVilnorsEndReleasesTheConnectionWithoutClose) {
  { const DBVilnor operations; }
  EXPECT_EQ(database.AliveConnections(), 0);
  EXPECT_EQ(database.AliveRecordsets(), 0);
  EXPECT_TRUE(database.LogOf(u"Recordset.Close").empty());
}

TEST_F(SharedConnection, SecondDBVilnorCannotOpenTheOpenConnection) {
  const DBVilnor first;
  EXPECT_EQ(ErrorNumberOf([] { const DBVilnor second; }), 3705);
  EXPECT_TRUE(Boxes().empty()) << "the error goes to the creator";
}

TEST_F(SharedConnection, FailedSecondDBVilnorLeavesTheConnectionToTheFirst) {
  DBVilnor first;
  EXPECT_EQ(ErrorNumberOf([] { const DBVilnor second; }), 3705);
  EXPECT_EQ(database.OpenConnections(), 1);
  EXPECT_EQ(first.GetVilnorUserByPID(1), u"åsa");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(SharedConnection, FailedSecondDBVilnorLeavesTheOpenRecordset) {
  DBVilnor first;
  first.GetVilnorUserByPID(2);
  EXPECT_EQ(ErrorNumberOf([] { const DBVilnor second; }), 3705);
  EXPECT_EQ(first.GetVilnorUserByPID(1), u"");
  ASSERT_EQ(Boxes().size(), 1U);
  EXPECT_TRUE(Boxes()[0].starts_with(u"3705 ")) << "an empty query leaves it open";
}

TEST_F(SharedConnection, EndOfOneDBVilnorTakesTheConnectionFromAll) {
  auto first = std::make_unique<DBVilnor>();
  db::ReleaseShared();
  DBVilnor second;
  EXPECT_EQ(second.GetVilnorUserByPID(1), u"åsa");
  first.reset();
  EXPECT_EQ(second.GetVilnorUserByPID(1), u"");
  second.DeleteVilnorUser(1);
  EXPECT_EQ(Boxes(), (std::vector<std::u16string>{
                         u"3709 The connection cannot be used to perform this operation. It is "
                         u"either closed or invalid in this context. in GetVilnorUserByPID",
                         u"3704 Operation is not allowed when the object is closed. in "
                         u"DeleteVilnorUser"}));
}

TEST_F(SharedConnection, CreatorOfDBVilnorGetsTheProvidersError) {
  database.FailCall(2, {-2147467259, u"Provider", u"Login failed"});
  EXPECT_EQ(ErrorNumberOf([] { const DBVilnor operations; }), -2147467259);
  EXPECT_EQ(database.AliveConnections(), 0);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(SharedConnection, CreatorOfDBVilnorGetsError429WithoutADatabaseInterface) {
  database.installed = false;
  EXPECT_EQ(ErrorNumberOf([] { const DBVilnor operations; }), 429);
}

TEST_F(SharedConnection, FailingRecordsetReleasesTheConnection) {
  database.FailCall(3, kScriptedFailure);
  EXPECT_EQ(ErrorNumberOf([] { const DBVilnor operations; }), 1001);
  EXPECT_EQ(database.AliveConnections(), 0);
  EXPECT_EQ(database.AliveRecordsets(), 0);
}

TEST_F(SharedConnection, InitConnectionRaisesOnAnOpenConnection) {
  DBVilnor operations;
  EXPECT_EQ(ErrorNumberOf([&] { operations.InitConnection(); }), 3705);
  EXPECT_EQ(operations.GetVilnorUserByPID(1), u"åsa") << "the object itself lives on";
}

TEST_F(SharedConnection, InitConnectionOpensAConnectionThatWasTaken) {
  DBVilnor operations;
  db::ReleaseShared();
  operations.InitConnection();
  EXPECT_EQ(operations.GetVilnorUserByPID(1), u"åsa");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(SharedConnection, NewDBVilnorReplacesAnOpenRecordset) {
  {
    DBVilnor operations;
    operations.GetVilnorUserByPID(2);
  }
  DBVilnor operations;
  EXPECT_EQ(operations.GetVilnorUserByPID(1), u"åsa");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(SharedConnection, NewDBVilnorFollowsChangedSessionSettings) {
  { const DBVilnor operations; }
  session.gConnectionParameter = u"Driver=Other";
  database.ClearLog();
  const DBVilnor operations;
  EXPECT_EQ(database.Log().at(0), u"Connection.ConnectionString = Driver=Other");
}

// Another thread has its own state: it does not know this one's session, opens its own connection,
// and releases only that.
TEST_F(SharedConnection, EachThreadHasItsOwnConnection) {
  DBVilnor operations;
  std::u16string userThere;
  fakes::OnAnotherThread([&] {
    platform::Use(ports);
    EXPECT_EQ(util::CurrentSettings().gConnectionParameter, u"");
    util::CurrentSettings() = session;
    EXPECT_EQ(db::CurrentConnectionState().gConnection, nullptr);
    EXPECT_EQ(db::CurrentConnectionState().gDB, nullptr);
    userThere = db::RenewGDB()->GetVilnorUserByPID(1);
    EXPECT_EQ(database.OpenConnections(), 2);
    db::ReleaseGDB();
  });
  EXPECT_EQ(userThere, u"åsa");
  EXPECT_EQ(database.OpenConnections(), 1);
  EXPECT_EQ(operations.GetVilnorUserByPID(1), u"åsa");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(SharedConnection, EachThreadHasItsOwnStatementText) {
  DBVilnor operations;
  operations.DeleteVilnorUser(8);
  fakes::OnAnotherThread([&] {
    platform::Use(ports);
    util::CurrentSettings() = session;
    EXPECT_EQ(db::CurrentConnectionState().gSql, u"");
    DBVilnor().DeleteVilnorUser(9);
  });
  EXPECT_EQ(db::CurrentConnectionState().gSql, u"Delete from VilnorPasient where PID = 8");
}

class ComponentsOwnObject : public SharedConnection {};

TEST_F(ComponentsOwnObject, GDBRaises91BeforeItIsMadeAndAfterItsRelease) {
  EXPECT_EQ(ErrorNumberOf([] { db::GDB(); }), 91);
  EXPECT_NE(db::RenewGDB(), nullptr);
  EXPECT_NE(db::GDB(), nullptr);
  db::ReleaseGDB();
  EXPECT_EQ(ErrorNumberOf([] { db::GDB(); }), 91);
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(ComponentsOwnObject, LeftoverGDBIsReleasedBeforeTheNextIsMade) {
  db::RenewGDB();
  EXPECT_EQ(db::RenewGDB()->GetVilnorUserByPID(1), u"åsa");
  EXPECT_EQ(database.OpenConnections(), 1);
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ComponentsOwnObject, GDBIsReplacedAfterItsConnectionWasTaken) {
  db::RenewGDB();
  db::ReleaseShared();
  EXPECT_EQ(db::RenewGDB()->GetVilnorUserByPID(1), u"åsa");
  EXPECT_TRUE(Boxes().empty());
}

TEST_F(ComponentsOwnObject, GDBCannotBeMadeBesideTheHostsObjectAndTakesNothingFromIt) {
  DBVilnor hosts;
  EXPECT_EQ(ErrorNumberOf([] { db::RenewGDB(); }), 3705);
  EXPECT_EQ(ErrorNumberOf([] { db::GDB(); }), 91);
  EXPECT_EQ(hosts.GetVilnorUserByPID(1), u"åsa");
}

TEST_F(ComponentsOwnObject, GDBStaysWithARunningCall) {
  const auto running = db::RenewGDB();
  EXPECT_EQ(ErrorNumberOf([] { db::RenewGDB(); }), 3705);
  EXPECT_EQ(db::GDB(), running);
  EXPECT_EQ(running->GetVilnorUserByPID(1), u"åsa");
}

TEST_F(ComponentsOwnObject, GDBIsKeptUnlessAnotherOperationReplacedIt) {
  const std::weak_ptr<DBVilnor> made = db::RenewGDB();
  EXPECT_EQ(db::KeptOrRenewed(made), made.lock());
  db::RenewGDB();
  EXPECT_TRUE(made.expired());
  const std::weak_ptr<DBVilnor> others = db::GDB();
  db::KeptOrRenewed(made);
  EXPECT_TRUE(others.expired());
  EXPECT_EQ(db::GDB()->GetVilnorUserByPID(1), u"åsa");
}

// A notification that arrives while an operation's box is open replaces gDB.
class RenewingDialogs : public fakes::Dialogs {
 public:
  platform::Answer Show(const platform::MessageBox& box) override {
    if (shown.empty()) {
      renewal = ErrorNumberOf([] { db::RenewGDB(); });
      ErrorNumberOf([] { db::RenewGDB(); });
    }
    return fakes::Dialogs::Show(box);
  }
  std::int32_t renewal = 0;
};

TEST_F(ComponentsOwnObject, GDBSurvivesItsCallWhenItsBoxLetsAnotherOperationIn) {
  RenewingDialogs renewing;
  platform::Platform reentered = fakes::With(ports, renewing);
  platform::Use(reentered);
  database.FailStatement(u"Delete from Journal", kScriptedFailure);
  db::RenewGDB()->DeleteFHP(77);
  EXPECT_EQ(renewing.renewal, 3705);
  EXPECT_EQ(renewing.Texts(), std::vector<std::u16string>{BoxIn(u"DeleteFHP")});
  EXPECT_FALSE(database.InTransaction());
}

}  // namespace
}  // namespace unit
