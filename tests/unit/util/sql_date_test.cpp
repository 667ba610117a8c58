#include "util/sql_date.h"

#include "util_fixture.h"

namespace util {
namespace {

class SqlDate : public UtilTest {
 protected:
  std::u16string Literal(int dbType, bool plainForm, std::u16string timeText = {}) {
    CurrentSettings().gDbType = static_cast<std::int16_t>(dbType);
    return GetSqlDate(Day(2026, 11, 16), plainForm, timeText);
  }
};

TEST_F(SqlDate, SqlDateIsDelimitedByDatabaseType) {
  EXPECT_EQ(Literal(1, false), u"#11-16-2026#");
  EXPECT_EQ(Literal(2, false), u"'11-16-2026'");
}

TEST_F(SqlDate, SqlDateHasTheTimeAfterABlank) {
  EXPECT_EQ(Literal(1, false, u"14:05:00"), u"#11-16-2026 14:05:00#");
  EXPECT_EQ(Literal(2, false, u"14:05:00"), u"'11-16-2026 14:05:00'");
  EXPECT_EQ(Literal(1, true, u"14:05:00"), u"'2026-11-16 14:05:00'");
}

TEST_F(SqlDate, SqlDatePutsTheBlankIntoTheCallersTimeText) {
  for (const std::int16_t dbType : std::initializer_list<std::int16_t>{1, 2, 3}) {
    CurrentSettings().gDbType = dbType;
    std::u16string timeText = u"14:05:00";
    GetSqlDate(Day(2026, 11, 16), false, timeText);
    EXPECT_EQ(timeText, u" 14:05:00");
    GetSqlDate(Day(2026, 11, 16), false, timeText);
    EXPECT_EQ(timeText, u"  14:05:00");
  }
}

TEST_F(SqlDate, SqlDateLeavesAnEmptyTimeTextEmpty) {
  std::u16string timeText;
  GetSqlDate(Day(2026, 11, 16), false, timeText);
  EXPECT_EQ(timeText, u"");
}

TEST_F(SqlDate, SqlDateIsEmptyForAnUnknownDatabaseType) {
  for (const int dbType : {3, 0, -1, 32767}) {
    EXPECT_EQ(Literal(dbType, false, u"14:05:00"), u"");
    EXPECT_EQ(Literal(dbType, true), u"");
  }
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(SqlDate, PlainSqlDateIsTheUsersShortDateInQuotes) {
  EXPECT_EQ(Literal(1, true), u"'2026-11-16'");
  EXPECT_EQ(Literal(2, true), u"'2026-11-16'");
  UseUsLocale();
  EXPECT_EQ(Literal(1, true), u"'11/16/2026'");
}

TEST_F(SqlDate, SqlDateIsMonthFirstWithDashesInEveryLocale) {
  UseUsLocale();
  EXPECT_EQ(Literal(1, false), u"#11-16-2026#");
  UseNorwegianLocale();
  EXPECT_EQ(Literal(1, false), u"#11-16-2026#");
}

TEST_F(SqlDate, SqlDateHasTwoDigitsForDayAndMonth) {
  std::u16string none;
  EXPECT_EQ(GetSqlDate(Day(2007, 1, 2), false, none), u"#01-02-2007#");
}

TEST_F(SqlDate, SqlDateLeavesTheDatesOwnTimeOut) {
  std::u16string none;
  EXPECT_EQ(GetSqlDate(automation::MakeDate({2026, 11, 16, 14, 5, 0}), false, none),
            u"#11-16-2026#");
}

TEST_F(SqlDate, PlainSqlDateHasTheDatesOwnTime) {
  const auto afternoon = automation::MakeDate({2026, 11, 16, 14, 5, 0});
  std::u16string timeText;
  EXPECT_EQ(GetSqlDate(afternoon, true, timeText), u"'2026-11-16 14:05:00'");
  timeText = u"08:00:00";
  EXPECT_EQ(GetSqlDate(afternoon, true, timeText), u"'2026-11-16 14:05:00 08:00:00'");
  UseUsLocale();
  timeText.clear();
  EXPECT_EQ(GetSqlDate(afternoon, true, timeText), u"'11/16/2026 2:05:00 PM'");
}

TEST_F(SqlDate, SqlDateOutsideTheCalendarShowsOverflowAndIsEmpty) {
  std::u16string none;
  EXPECT_EQ(GetSqlDate(kNoDate, false, none), u"");
  EXPECT_EQ(GetSqlDate({-1e9}, true, none), u"");
  EXPECT_EQ(dialogs.shown, Boxes(2, ErrorBox(u"6 Overflow in GetSqlDate")));
}

}  // namespace
}  // namespace util
