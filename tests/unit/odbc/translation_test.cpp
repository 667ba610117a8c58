#include "odbc/translation.h"

#include <gmock/gmock.h>
#include <string>
#include <utility>
#include <vector>

#include "odbc/date_literal.h"

namespace odbc {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

const std::u16string kSqlite = u"SQLite";
const std::u16string kPostgresql = u"PostgreSQL";
const std::u16string kMariadb = u"MariaDB";

bool NoDateColumn(std::u16string_view /*table*/, std::u16string_view /*column*/) {
  return false;
}
bool OnlyDateColumns(std::u16string_view /*table*/, std::u16string_view /*column*/) {
  return true;
}

std::u16string Translated(const std::u16string& product, std::u16string_view statement,
                          const IsDateColumn& isDateColumn = NoDateColumn) {
  return Translate(statement, DialectOf(product), isDateColumn);
}

TEST(Dialect, IdentityIsReadInAnyCase) {
  EXPECT_EQ(Translated(kSqlite, u"Select @@Identity"), u"Select last_insert_rowid()");
  EXPECT_EQ(Translated(kSqlite, u"SELECT @@IDENTITY AS x"), u"SELECT last_insert_rowid() AS x");
  EXPECT_EQ(Translated(kPostgresql, u"select @@identity"), u"select lastval()");
}

TEST(Dialect, NameThatOnlyBeginsLikeIdentityIsUnchanged) {
  for (const auto* statement :
       {u"Select @@Identity2", u"Select @@@Identity", u"Select @Identity"}) {
    EXPECT_EQ(Translated(kSqlite, statement), statement);
  }
}

TEST(Dialect, HashDateBecomesIsoTextForEveryProduct) {
  for (const auto& product : {kSqlite, kPostgresql, kMariadb}) {
    EXPECT_EQ(Translated(product, u"VALUES (1,#11-16-2026 14:05:00#,#01-02-2026#)"),
              u"VALUES (1,'2026-11-16 14:05:00','2026-01-02')");
  }
}

TEST(Dialect, TextBetweenHashesThatIsNotADateIsUnchanged) {
  for (const auto* statement :
       {u"SELECT #13-16-2026#", u"SELECT #02-30-2026#", u"SELECT #11-16-2026 24:00:00#",
        u"SELECT #11-16-2026 14:05#", u"SELECT #1-1-2026#", u"SELECT #11/16/2026#",
        u"SELECT # 11-16-2026 #", u"SELECT ##", u"SELECT #", u"SELECT a # b # c",
        u"SELECT #11-16-2026", u"SELECT '{}' #> '{a}'"}) {
    EXPECT_EQ(Translated(kSqlite, statement), statement);
    EXPECT_EQ(Translated(kPostgresql, statement), statement);
    EXPECT_EQ(Translated(kMariadb, statement), statement);
  }
}

TEST(Dialect, TextsNamesAndCommentsAreUnchanged) {
  for (const auto* statement :
       {u"SELECT '@@Identity #11-16-2026#'", u"SELECT 'it''s #11-16-2026#'",
        u"SELECT \"#11-16-2026#\" FROM \"a\"\"@@Identity\"", u"SELECT 1 -- @@Identity #11-16-2026#",
        u"SELECT 1 /* @@Identity ' #11-16-2026# */ , 2", u"SELECT 'never ending #11-16-2026#"}) {
    EXPECT_EQ(Translated(kSqlite, statement, OnlyDateColumns), statement);
    EXPECT_EQ(Translated(kPostgresql, statement, OnlyDateColumns), statement);
    EXPECT_EQ(Translated(kMariadb, statement, OnlyDateColumns), statement);
  }
}

TEST(Dialect, SqlAfterATextNameOrCommentIsTranslated) {
  const std::u16string before = u"SELECT 'it''s', \"a\"\"b\", /* ' */ '' -- '\n";
  EXPECT_EQ(Translated(kSqlite, before + u", @@Identity"), before + u", last_insert_rowid()");
  EXPECT_EQ(Translated(kPostgresql, before + u", @@Identity"), before + u", lastval()");
}

TEST(Dialect, QuotesOfEachProductAreRecognised) {
  EXPECT_EQ(Translated(kSqlite, u"SELECT [@@Identity], `@@Identity`, @@Identity"),
            u"SELECT [@@Identity], `@@Identity`, last_insert_rowid()");
  EXPECT_EQ(
      Translated(kPostgresql, u"SELECT E'it\\'s @@Identity', $t$ '@@Identity $t$, @@Identity"),
      u"SELECT E'it\\'s @@Identity', $t$ '@@Identity $t$, lastval()");
  EXPECT_EQ(Translated(kPostgresql, u"SELECT $$@@Identity$$, $1, a$b, '\\', @@Identity"),
            u"SELECT $$@@Identity$$, $1, a$b, '\\', lastval()");
}

TEST(Dialect, IdentityIsUnchangedForMariadb) {
  EXPECT_EQ(Translated(kMariadb, u"Select @@Identity"), u"Select @@Identity");
}

TEST(Dialect, QuotesAndCommentsOfMariadbAreRecognised) {
  EXPECT_EQ(Translated(kMariadb, u"SELECT `#11-16-2026#`, '\\', #11-16-2026#"),
            u"SELECT `#11-16-2026#`, '\\', '2026-11-16'");
  EXPECT_EQ(Translated(kMariadb, u"SELECT 1 # it's a comment\n, #11-16-2026#"),
            u"SELECT 1 # it's a comment\n, '2026-11-16'");
  EXPECT_EQ(Translated(kMariadb, u"SELECT 1 -- it's\n, 5--#11-16-2026#"),
            u"SELECT 1 -- it's\n, 5--'2026-11-16'");
}

TEST(Dialect, UnknownProductGetsTheStatementUnchanged) {
  const auto* const statement = u"Select @@Identity, #11-16-2026#";
  EXPECT_EQ(Translated(u"Elsewhere", statement, OnlyDateColumns), statement);
}

TEST(Dialect, ProductIsFoundByTheDriversOrItsOwnName) {
  EXPECT_EQ(DialectOf(u"SQLite3").product, kSqlite);
  EXPECT_EQ(DialectOf(kSqlite).product, kSqlite);
  EXPECT_EQ(DialectOf(u"/usr/lib/libsqlite3odbc.so").product, kSqlite);
  EXPECT_EQ(DialectOf(u"PostgreSQL Unicode").product, kPostgresql);
  EXPECT_EQ(DialectOf(u"MariaDB Unicode").product, kMariadb);
  EXPECT_EQ(DialectOf(u"Elsewhere").product, u"");
  EXPECT_EQ(DialectOf(u"").product, u"");
}

TEST(Dialect, QuotedDatesStayForAProductThatReadsThem) {
  const auto* const statement = u"INSERT INTO T (D) VALUES ('11-16-2026 14:05:00')";
  EXPECT_EQ(Translated(kPostgresql, statement, OnlyDateColumns), statement);
}

// Which columns are queried, and that the answer decides.
class QuotedDate : public testing::Test {
 protected:
  std::u16string Translated(std::u16string_view statement, bool areDates) {
    asked.clear();
    return Translate(statement, DialectOf(kSqlite),
                     [&](std::u16string_view table, std::u16string_view column) {
                       asked.emplace_back(table, column);
                       return areDates;
                     });
  }
  std::vector<std::pair<std::u16string, std::u16string>> asked;
};

TEST_F(QuotedDate, QuotedDateBecomesIsoTextForMariadbToo) {
  EXPECT_EQ(
      ::odbc::Translate(u"UPDATE T SET D = '11-16-2026'", DialectOf(kMariadb), OnlyDateColumns),
      u"UPDATE T SET D = '2026-11-16'");
}

TEST_F(QuotedDate, QuotedDateBecomesIsoTextOnlyInADateColumn) {
  const std::u16string insert = u"INSERT INTO T (D) VALUES ('11-16-2026 14:05:00')";
  EXPECT_EQ(Translated(insert, true), u"INSERT INTO T (D) VALUES ('2026-11-16 14:05:00')");
  EXPECT_EQ(Translated(insert, false), insert);
}

TEST_F(QuotedDate, QuotedDateInAnInsertBelongsToTheColumnAtItsPosition) {
  EXPECT_EQ(Translated(u"Insert into Vilnor (PID, CaseId,[Reg Date]) VALUES (max(1, 2) , 'a,b)',"
                       u" '11-16-2026')",
                       true),
            u"Insert into Vilnor (PID, CaseId,[Reg Date]) VALUES (max(1, 2) , 'a,b)',"
            u" '2026-11-16')");
  EXPECT_THAT(asked, ElementsAre(Pair(u"Vilnor", u"[Reg Date]")));
}

TEST_F(QuotedDate, QuotedDateBelongsToTheColumnItIsComparedWithOrAssignedTo) {
  EXPECT_EQ(Translated(u"UPDATE T SET D = '11-16-2026' WHERE E <> '11-17-2026' AND F>='11-18-2026'",
                       true),
            u"UPDATE T SET D = '2026-11-16' WHERE E <> '2026-11-17' AND F>='2026-11-18'");
  EXPECT_THAT(asked, ElementsAre(Pair(u"T", u"D"), Pair(u"T", u"E"), Pair(u"T", u"F")));
}

TEST_F(QuotedDate, QuotedDateWithoutAClearColumnIsUnchanged) {
  for (const auto* statement :
       {u"INSERT INTO T VALUES ('11-16-2026')", u"INSERT INTO T (A) VALUES ('x' || '11-16-2026')",
        u"INSERT INTO T (A) VALUES (f('11-16-2026'))",
        u"INSERT INTO T (A) VALUES (1, '11-16-2026')",
        u"INSERT INTO main.T (A) VALUES ('11-16-2026')", u"SELECT '11-16-2026'",
        u"SELECT '11-16-2026' FROM T", u"SELECT 1 FROM T WHERE A LIKE '11-16-2026'",
        u"'11-16-2026'", u"= '11-16-2026'", u"INTO", u"FROM T = '11-16-2026"}) {
    EXPECT_EQ(Translated(statement, true), statement);
  }
}

TEST_F(QuotedDate, ColumnTypeIsQueriedOnlyWhenTheWholeTextIsADate) {
  for (const auto* statement :
       {u"INSERT INTO T (A) VALUES ('den 11-16-2026')", u"INSERT INTO T (A) VALUES ('11-16-2026 ')",
        u"INSERT INTO T (A) VALUES ('2026-11-16')", u"INSERT INTO T (A) VALUES ('')"}) {
    EXPECT_EQ(Translated(statement, true), statement);
    EXPECT_THAT(asked, IsEmpty());
  }
}

TEST(DateLiteral, HostsDatesBecomeIsoText) {
  EXPECT_EQ(IsoFromHostDate(u"02-29-2024"), u"2024-02-29");
  EXPECT_EQ(IsoFromHostDate(u"12-31-1999 23:59:59"), u"1999-12-31 23:59:59");
}

TEST(DateLiteral, OtherTextsAreNotDateLiterals) {
  for (const auto* text : {u"", u"02-29-2023", u"00-01-2026", u"12-00-2026", u"12-31-1999 23:59:60",
                           u"12-31-1999T23:59:59", u"12-31-1999  23:59:5", u"1２-31-1999"}) {
    EXPECT_EQ(IsoFromHostDate(text), std::nullopt);
  }
}

}  // namespace
}  // namespace odbc
