#include "odbc/driver_error.h"

#include <gtest/gtest.h>

namespace odbc {
namespace {

std::int32_t NumberOf(std::u16string_view product, std::u16string state, std::int32_t native = 0) {
  return static_cast<std::int32_t>(
      ErrorOf({std::move(state), native, u"text"}, DialectOf(product)));
}

TEST(DriverError, SqlStateDecidesTheNumber) {
  EXPECT_EQ(NumberOf(u"", u"42601"), -2147217900) << "syntax";
  EXPECT_EQ(NumberOf(u"", u"42S22"), -2147217900) << "missing column";
  EXPECT_EQ(NumberOf(u"", u"42S02"), -2147217865) << "missing table";
  EXPECT_EQ(NumberOf(u"", u"42S01"), -2147217857) << "table exists";
  EXPECT_EQ(NumberOf(u"", u"23505"), -2147217873) << "constraint";
  EXPECT_EQ(NumberOf(u"", u"22001"), -2147217833) << "text too long";
  EXPECT_EQ(NumberOf(u"", u"22P02"), -2147217913) << "no number";
  EXPECT_EQ(NumberOf(u"", u"28P01"), -2147217843) << "password";
  EXPECT_EQ(NumberOf(u"", u"HYT00"), -2147217871) << "timeout";
  EXPECT_EQ(NumberOf(u"", u"08001"), -2147467259) << "no connection";
  EXPECT_EQ(NumberOf(u"", u"HY000"), -2147467259);
  EXPECT_EQ(NumberOf(u"", u""), -2147467259);
}

TEST(DriverError, PostgresqlSpecificStatesAreKnown) {
  EXPECT_EQ(NumberOf(u"PostgreSQL", u"42703"), -2147217900) << "missing column";
  EXPECT_EQ(NumberOf(u"PostgreSQL", u"42P01"), -2147217865) << "missing table";
  EXPECT_EQ(NumberOf(u"PostgreSQL", u"42P07"), -2147217857) << "table exists";
  EXPECT_EQ(NumberOf(u"PostgreSQL", u"42501"), -2147217911) << "no permission";
  EXPECT_EQ(NumberOf(u"PostgreSQL", u"55P03"), -2147217900) << "lock not available";
  EXPECT_EQ(NumberOf(u"PostgreSQL", u"57014"), -2147217871) << "statement timeout of the server";
}

TEST(DriverError, SqliteResultCodeDecidesWhenTheStateIsGeneral) {
  EXPECT_EQ(NumberOf(u"SQLite", u"HY000", 1), -2147217900) << "syntax";
  EXPECT_EQ(NumberOf(u"SQLite", u"HY000", 19), -2147217873) << "constraint";
  EXPECT_EQ(NumberOf(u"SQLite", u"HY000", 5), -2147467259) << "locked";
  EXPECT_EQ(NumberOf(u"", u"HY000", 1), -2147467259) << "another product's";
}

TEST(DriverError, MariadbErrorCodeDecidesWhenTheStateIsTooGeneral) {
  EXPECT_EQ(NumberOf(u"MariaDB", u"42000", 1064), -2147217900) << "syntax";
  EXPECT_EQ(NumberOf(u"MariaDB", u"42000", 1142), -2147217911) << "no permission";
  EXPECT_EQ(NumberOf(u"MariaDB", u"42000", 1049), -2147467259) << "no such database";
  EXPECT_EQ(NumberOf(u"MariaDB", u"HY000", 1205), -2147217871) << "waited too long for a lock";
  EXPECT_EQ(NumberOf(u"MariaDB", u"70100", 1969), -2147217871) << "ran too long";
  EXPECT_EQ(NumberOf(u"MariaDB", u"HY000", 2002), -2147467259) << "no server";
  EXPECT_EQ(NumberOf(u"MariaDB", u"23000", 1062), -2147217873) << "constraint";
}

TEST(DriverError, ErrorCarriesTheDriversTextStateAndCode) {
  const DriverError error({u"42601", 7, u"ERROR: syntax error"}, kUnknownProduct);
  EXPECT_EQ(error.number(), -2147217900);
  EXPECT_EQ(error.description(), u"ERROR: syntax error");
  EXPECT_EQ(error.state(), u"42601");
  EXPECT_EQ(error.native(), 7);
}

TEST(DriverError, FailureWithoutADiagnosticRecordIsUnspecified) {
  EXPECT_EQ(DriverError(Diagnostic(), kUnknownProduct).description(), u"Unspecified error");
}

}  // namespace
}  // namespace odbc
