// States, errors and texts of the connection.
#include "contract/database_fixture.h"

namespace contract {
namespace {

TEST_P(DatabaseContract, EveryCallOnAClosedConnectionRaises3704) {
  const auto closed = database->NewConnection();
  for (const auto& raised :
       {ErrorOf([&] { closed->Execute(u"SELECT 1", -1); }), ErrorOf([&] { closed->BeginTrans(); }),
        ErrorOf([&] { closed->CommitTrans(); }), ErrorOf([&] { closed->RollbackTrans(); })}) {
    EXPECT_EQ(raised.number, 3704);
    EXPECT_EQ(raised.text, kClosedText);
  }
}

TEST_P(DatabaseContract, ConnectionStringOfAnOpenConnectionCannotBeSet) {
  const auto raised =
      ErrorOf([&] { connection->SetConnectionString(GetParam().connectionString); });
  EXPECT_EQ(raised.number, 3705);
  EXPECT_EQ(raised.text, kOpenText);
}

TEST_P(DatabaseContract, OpenConnectionCannotBeOpenedAgain) {
  const auto raised = ErrorOf([&] { connection->Open(u"", u"", u"", -1); });
  EXPECT_EQ(raised.number, 3705);
  EXPECT_EQ(raised.text, kOpenText);
}

TEST_P(DatabaseContract, OpeningWithEmptyTextsTakesTheStoredString) {
  const auto stored = database->NewConnection();
  stored->SetConnectionString(GetParam().connectionString);
  stored->Open(u"", u"", u"", -1);
  EXPECT_EQ(stored->Execute(u"SELECT 'x'", -1)->Field(0), automation::Value(u"x"));
}

TEST_P(DatabaseContract, FailedOpenLeavesTheConnectionClosedAndReusable) {
  const auto retried = database->NewConnection();
  const auto raised =
      ErrorOf([&] { retried->Open(u"Driver=No Such Driver;Database=x", u"", u"", -1); });
  EXPECT_EQ(raised.number, kFailure);
  EXPECT_THAT(raised.text, HasText(u"[Driver Manager]"));
  EXPECT_EQ(ErrorOf([&] { retried->Execute(u"SELECT 1", -1); }).number, 3704);

  retried->Open(GetParam().connectionString, u"", u"", -1);
  EXPECT_EQ(retried->Execute(u"SELECT 'x'", -1)->Field(0), automation::Value(u"x"));
}

TEST_P(DatabaseContract, UninstalledProviderRaises3706) {
  const auto foreign = database->NewConnection();
  const auto raised =
      ErrorOf([&] { foreign->Open(u"Provider=No.Such.Provider;Data Source=x", u"", u"", -1); });
  EXPECT_EQ(raised.number, 3706);
  EXPECT_EQ(raised.text, u"Provider cannot be found. It may not be properly installed.");
}

TEST_P(DatabaseContract, ProviderForOdbcMayBeNamed) {
  const auto named = database->NewConnection();
  named->Open(u"Provider=MSDASQL;" + GetParam().connectionString, u"", u"", -1);
  EXPECT_EQ(named->Execute(u"SELECT 'x'", -1)->Field(0), automation::Value(u"x"));
}

TEST_P(DatabaseContract, TwoConnectionsSeeTheSameData) {
  const auto second = NewOpenConnection();
  Run(u"INSERT INTO Trial (Number) VALUES (7)");
  EXPECT_EQ(second->Execute(u"SELECT Number FROM Trial", -1)->Field(0),
            automation::Value(std::int32_t{7}));
}

}  // namespace
}  // namespace contract
