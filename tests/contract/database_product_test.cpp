// Behaviour of single products: a locked file, a missing folder, an unreachable or lost server, a
// session with its own settings.
#include "contract/database_fixture.h"

namespace contract {
namespace {

using automation::Value;

// The name of a server's driver, and the statement with which one session ends another.
struct Server {
  std::u16string driver;
  std::u16string driverFile;
  std::u16string ownSession;
  std::u16string endSession;
};

Server ServerOf(const Product& product) {
  if (product.name == "MariaDB") {
    return {u"MariaDB Unicode", u"libmaodbc.so", u"CONNECTION_ID()", u"KILL "};
  }
  return {u"PostgreSQL Unicode", u"psqlodbcw.so", u"pg_backend_pid()",
          u"SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE pid = "};
}

std::vector<Product> Servers() {
  auto servers = Products();
  std::erase_if(servers, [](const Product& product) { return product.name == "SQLite"; });
  return servers;
}

class SqliteContract : public DatabaseContract {};
class ServerContract : public DatabaseContract {
 protected:
  const Server server = ServerOf(GetParam());
};
class PostgresqlContract : public DatabaseContract {};
class MariadbContract : public DatabaseContract {};

INSTANTIATE_TEST_SUITE_P(Products, SqliteContract, testing::ValuesIn(ProductsNamed("SQLite")),
                         [](const auto& instance) { return instance.param.name; });
INSTANTIATE_TEST_SUITE_P(Products, ServerContract, testing::ValuesIn(Servers()),
                         [](const auto& instance) { return instance.param.name; });
INSTANTIATE_TEST_SUITE_P(Products, PostgresqlContract,
                         testing::ValuesIn(ProductsNamed("PostgreSQL")),
                         [](const auto& instance) { return instance.param.name; });
INSTANTIATE_TEST_SUITE_P(Products, MariadbContract, testing::ValuesIn(ProductsNamed("MariaDB")),
                         [](const auto& instance) { return instance.param.name; });
// main() prints a note when a server is not tested.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(ServerContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(PostgresqlContract);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(MariadbContract);

TEST_P(SqliteContract, FileInAMissingFolderCannotBeOpened) {
  const auto missing = database->NewConnection();
  const auto& given = GetParam().connectionString;
  const auto driver = given.substr(0, given.find(u"Database="));
  const auto raised =
      ErrorOf([&] { missing->Open(driver + u"Database=/nonexistent/folder/x.db", u"", u"", -1); });
  EXPECT_EQ(raised.number, kFailure);
  EXPECT_THAT(raised.text, HasText(u"[SQLite]"));
}

TEST_P(SqliteContract, LockOfAnotherClientIsWaitedForAsLongAsTheStringSays) {
  connection->BeginTrans();
  Run(u"INSERT INTO Trial (Number) VALUES (1)");
  const auto second = database->NewConnection();
  second->Open(GetParam().connectionString + u";Timeout=50", u"", u"", -1);
  const auto raised =
      ErrorOf([&] { second->Execute(u"INSERT INTO Trial (Number) VALUES (2)", -1); });
  EXPECT_EQ(raised.number, kFailure);
  EXPECT_THAT(raised.text, HasText(u"database is locked"));

  connection->CommitTrans();
  second->Execute(u"INSERT INTO Trial (Number) VALUES (2)", -1);
  EXPECT_EQ(Scalar(u"SELECT COUNT(*) FROM Trial"), Value(std::int32_t{2}));
}

TEST_P(SqliteContract, TextIsStoredAsUtf8WhateverTheLocale) {
  Run(u"INSERT INTO Trial (Note) VALUES ('å\u4E2D😀')");
  EXPECT_EQ(Scalar(u"SELECT hex(Note) FROM Trial"), Value(u"C3A5E4B8ADF09F9880"));
}

TEST_P(SqliteContract, NonAsciiLettersInTheDriversErrorTextAreKept) {
  EXPECT_THAT(ErrorOf([&] { Run(u"SELECT 1 FROM Ärende"); }).text, HasText(u"Ärende"));
}

TEST_P(SqliteContract, ContentThatDoesNotFitItsColumnsTypeStaysText) {
  Run(u"INSERT INTO Trial (Number, Moment, Flag) VALUES ('many', 'soon', 'maybe')");
  const auto row = Query(u"SELECT Number, Moment, Flag FROM Trial");
  EXPECT_EQ(row->Field(0), Value(u"many"));
  EXPECT_EQ(row->Field(1), Value(u"soon"));
  EXPECT_EQ(row->Field(2), Value(u"maybe"));
}

TEST_P(ServerContract, UnreachableServerRaisesTheDriversText) {
  const auto nowhere = database->NewConnection();
  const auto raised = ErrorOf([&] {
    nowhere->Open(u"Driver=" + server.driver + u";Server=127.0.0.1;Port=1;Database=x;UID=x", u"",
                  u"", -1);
  });
  EXPECT_EQ(raised.number, kFailure);
  EXPECT_THAT(raised.text, HasText(u"127.0.0.1"));
}

TEST_P(ServerContract, UserGivenToOpenOverridesTheOneInTheString) {
  const auto unknown = database->NewConnection();
  const auto raised =
      ErrorOf([&] { unknown->Open(GetParam().connectionString, u"no_such_user", u"secret", -1); });
  EXPECT_NE(raised.number, 0);
  EXPECT_THAT(raised.text, HasText(u"no_such_user"));
}

TEST_P(ServerContract, ServerIsRecognisedByItsAnswerWhenTheStringNamesNoProduct) {
  std::u16string text = GetParam().connectionString;
  text.replace(text.find(server.driver), server.driver.size(), server.driverFile);
  connection = database->NewConnection();
  connection->Open(text, u"", u"", -1);
  Run(u"INSERT INTO Trial (Number, Moment) VALUES (7, '02-03-2026 14:05:00')");
  EXPECT_EQ(Scalar(u"SELECT Moment FROM Trial"), Value(Moment(2026, 2, 3, 14, 5)));
  EXPECT_EQ(Scalar(u"Select @@Identity"), Scalar(u"SELECT TrialId FROM Trial"));
}

TEST_P(ServerContract, LossOfTheServerInsideATransactionIsAnErrorOnly) {
  auto lost = NewOpenConnection();
  const auto session = lost->Execute(u"SELECT " + server.ownSession, -1)->Field(0);
  lost->BeginTrans();
  lost->Execute(u"INSERT INTO Trial (Number) VALUES (1)", -1);
  Run(server.endSession + automation::Decimal10(session.As<std::int32_t>()));

  EXPECT_NE(ErrorOf([&] { lost->Execute(u"INSERT INTO Trial (Number) VALUES (2)", -1); }).number,
            0);
  ErrorOf([&] { lost->RollbackTrans(); });
  EXPECT_EQ(ErrorOf([&] { lost->RollbackTrans(); }).number, kNoTransaction);
  lost = NewOpenConnection();
  EXPECT_EQ(lost->Execute(u"SELECT COUNT(*) FROM Trial", -1)->Field(0), Value(std::int32_t{0}));
}

TEST_P(PostgresqlContract, DatesAreReadCorrectlyInEveryInitialDateStyle) {
  for (const std::u16string style : {u"German, DMY", u"SQL, DMY", u"ISO, YMD", u"Postgres, MDY"}) {
    connection = database->NewConnection();
    connection->Open(
        GetParam().connectionString + u";ConnSettings=SET DateStyle TO '" + style + u"'", u"", u"",
        -1);
    Run(u"DELETE FROM Trial");
    Run(u"INSERT INTO Trial (Number, Moment, Day) VALUES (1, '02-03-2026 14:05:00',"
        u" #02-03-2026#)");
    const auto row = Query(u"SELECT Moment, Day FROM Trial");
    EXPECT_EQ(row->Field(0), Value(Moment(2026, 2, 3, 14, 5)));
    EXPECT_EQ(row->Field(1), Value(Moment(2026, 2, 3)));
  }
}

TEST_P(PostgresqlContract, FixedWidthTextKeepsItsTrailingBlanks) {
  Run(u"INSERT INTO Trial (Code) VALUES ('ab')");
  EXPECT_EQ(Query(u"SELECT Code FROM Trial")->Field(0), Value(u"ab   "));
}

// A session starts with the settings of the server's administrator.
TEST_P(MariadbContract, StatementsMeanTheSameInEveryInitialSqlMode) {
  for (const std::u16string settings :
       {u"SET sql_mode = '', autocommit = 0", u"SET sql_mode = 'ANSI,MSSQL', autocommit = 1",
        u"SET sql_mode = 'TRADITIONAL', tx_isolation = 'SERIALIZABLE'"}) {
    connection = database->NewConnection();
    connection->Open(GetParam().connectionString + u";INITSTMT={" + settings + u"}", u"", u"", -1);
    Run(u"DELETE FROM Trial");
    Run(u"INSERT INTO Trial (Number, Moment, Note) VALUES (1, '02-03-2026 14:05:00', 'C:\\new')");
    const auto row = NewOpenConnection()->Execute(
        u"SELECT Moment, Note AS \"Note\" FROM Trial WHERE Note = 'C:\\new'", -1);
    EXPECT_EQ(row->Field(0), Value(Moment(2026, 2, 3, 14, 5)));
    EXPECT_EQ(row->Field(1), Value(u"C:\\new"));
    EXPECT_NE(ErrorOf([&] { Run(u"INSERT INTO Trial (Code) VALUES ('too long')"); }).number, 0);
    EXPECT_NE(ErrorOf([&] { Run(u"INSERT INTO Trial (Day) VALUES ('0000-00-00')"); }).number, 0);
  }
}

TEST_P(MariadbContract, ZeroDateIsNull) {
  Run(u"SET SESSION sql_mode = ''");
  Run(u"INSERT INTO Trial (Moment, Day) VALUES ('0000-00-00 00:00:00', '0000-00-00')");
  const auto row = Query(u"SELECT Moment, Day FROM Trial");
  EXPECT_TRUE(row->Field(0).IsNull());
  EXPECT_TRUE(row->Field(1).IsNull());
}

TEST_P(MariadbContract, BitIsABoolean) {
  Run(u"CREATE TEMPORARY TABLE Bits (Yes bit(1), No bit(1))");
  Run(u"INSERT INTO Bits (Yes, No) VALUES (TRUE, FALSE)");
  const auto row = Query(u"SELECT Yes, No FROM Bits");
  EXPECT_EQ(row->Field(0), Value(true));
  EXPECT_EQ(row->Field(1), Value(false));
}

TEST_P(MariadbContract, StatementThatRunsTooLongIsCancelled) {
  Run(u"SET SESSION max_statement_time = 0.05");
  const auto raised = ErrorOf([&] {
    Run(u"SELECT COUNT(*) FROM information_schema.COLUMNS a, information_schema.COLUMNS b,"
        u" information_schema.COLUMNS c");
  });
  EXPECT_EQ(raised.number, kTimeExpired);
}

TEST_P(MariadbContract, StatementTimeoutIsTheDefaultOfADO) {
  EXPECT_EQ(Scalar(u"SELECT @@max_statement_time = 30"), Value(std::int32_t{1}));
}

TEST_P(MariadbContract, TransactionSeesWhatOthersHaveCommitted) {
  connection->BeginTrans();
  EXPECT_EQ(Scalar(u"SELECT COUNT(*) FROM Trial"), Value(std::int32_t{0}));
  NewOpenConnection()->Execute(u"INSERT INTO Trial (Number) VALUES (1)", -1);
  EXPECT_EQ(Scalar(u"SELECT COUNT(*) FROM Trial"), Value(std::int32_t{1}));
  connection->RollbackTrans();
}

}  // namespace
}  // namespace contract
