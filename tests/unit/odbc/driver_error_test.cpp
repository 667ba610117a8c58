#include "odbc/driver_error.h"

#include <gtest/gtest.h>

namespace odbc {
namespace {

std::int32_t NumberOf(std::u16string state, std::int32_t native = 0, std::u16string text = u"") {
  return ErrorNumber({std::move(state), native, std::move(text)});
}

TEST(DriverError, TheStateDecidesTheNumber) {
  EXPECT_EQ(NumberOf(u"42601"), -2147217900) << "syntax";
  EXPECT_EQ(NumberOf(u"42703"), -2147217900) << "missing column";
  EXPECT_EQ(NumberOf(u"42P01"), -2147217865) << "missing table";
  EXPECT_EQ(NumberOf(u"42S01"), -2147217857) << "table exists";
  EXPECT_EQ(NumberOf(u"42501"), -2147217911) << "no permission";
  EXPECT_EQ(NumberOf(u"23505"), -2147217873) << "constraint";
  EXPECT_EQ(NumberOf(u"22001"), -2147217833) << "text too long";
  EXPECT_EQ(NumberOf(u"22P02"), -2147217913) << "no number";
  EXPECT_EQ(NumberOf(u"28P01"), -2147217843) << "password";
  EXPECT_EQ(NumberOf(u"HYT00"), -2147217871) << "timeout";
  EXPECT_EQ(NumberOf(u"57014"), -2147217871) << "statement timeout of the server";
  EXPECT_EQ(NumberOf(u"08001"), -2147467259) << "no connection";
  EXPECT_EQ(NumberOf(u"HY000"), -2147467259);
  EXPECT_EQ(NumberOf(u""), -2147467259);
}

TEST(DriverError, SqlitesResultCodeDecidesWhereItsStateSaysNothing) {
  EXPECT_EQ(NumberOf(u"HY000", 1, u"[SQLite]near \"x\": syntax error (1)"), -2147217900);
  EXPECT_EQ(NumberOf(u"HY000", 19, u"[SQLite]UNIQUE constraint failed (19)"), -2147217873);
  EXPECT_EQ(NumberOf(u"HY000", 5, u"[SQLite]database is locked (5)"), -2147467259);
  EXPECT_EQ(NumberOf(u"HY000", 1, u"[Other]failure"), -2147467259);
}

TEST(DriverError, CarriesTheDriversTextStateAndCode) {
  const DriverError error({u"42601", 7, u"ERROR: syntax error"});
  EXPECT_EQ(error.number(), -2147217900);
  EXPECT_EQ(error.description(), u"ERROR: syntax error");
  EXPECT_EQ(error.state(), u"42601");
  EXPECT_EQ(error.native(), 7);
}

TEST(DriverError, AFailureWithoutARecordIsUnspecified) {
  EXPECT_EQ(DriverError(Diagnostic()).description(), u"Unspecified error");
}

}  // namespace
}  // namespace odbc
