#include "automation/date.h"

#include <gtest/gtest.h>

#include "automation/conversion.h"
#include "fakes/printing.h"

namespace automation {
namespace {

using fakes::ErrorNumberOf;

const Regional kUs;
const Regional kSwedish{.shortDate = u"yyyy-MM-dd",
                        .decimalSeparator = u',',
                        .groupSeparator = u'\u00A0',
                        .twelveHourClock = false};
const Regional kGerman{.shortDate = u"dd.MM.yyyy", .twelveHourClock = false};

Date Day(int year, int month, int day) {
  return MakeDate({year, month, day, 0, 0, 0});
}
Date Time(int year, int month, int day, int hour, int minute, int second = 0) {
  return MakeDate({year, month, day, hour, minute, second});
}

TEST(Dates, CountDaysFromTheEpochAndBack) {
  EXPECT_EQ(Day(1899, 12, 30).days, 0);
  EXPECT_EQ(Day(1900, 1, 1).days, 2);
  EXPECT_EQ(Day(2026, 11, 16).days, 46342);
  EXPECT_EQ(Time(1899, 12, 29, 6, 0).days, -1.25);
  for (const Date date : {Day(100, 1, 1), Time(9999, 12, 31, 23, 59, 59), Time(1899, 12, 29, 6, 0),
                          Time(2000, 2, 29, 12, 34, 56)}) {
    EXPECT_EQ(MakeDate(PartsOf(date)), date);
  }
}

TEST(Dates, RoundToTheNearestSecondAcrossMidnight) {
  EXPECT_EQ(PartsOf({45000.9999999}), PartsOf({45001.0}));
}

TEST(Dates, OutsideTheCalendarRaiseOverflow) {
  EXPECT_EQ(ErrorNumberOf([] { PartsOf({3000000}); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { PartsOf({-700000}); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { PartsOf({1e300}); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { ToDate(1e9, kUs); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { MakeDate({2001, 2, 29, 0, 0, 0}); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { AddYears(Day(9999, 1, 1), 1); }), 5);
}

TEST(DateTexts, FollowTheShortDateAndTheClockOfTheLocale) {
  EXPECT_EQ(DateText(Day(2026, 1, 5), kSwedish), u"2026-01-05");
  EXPECT_EQ(DateText(Day(2026, 1, 5), kUs), u"1/5/2026");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 14, 5), kSwedish), u"2026-01-05 14:05:00");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 14, 5), kUs), u"1/5/2026 2:05:00 PM");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 0, 0, 1), kUs), u"1/5/2026 12:00:01 AM");
  EXPECT_EQ(DateText({0.5}, kSwedish), u"12:00:00");
  EXPECT_EQ(DateText({0}, kUs), u"12:00:00 AM");
}

TEST(DateReading, TakesTheOrderOfTheLocale) {
  EXPECT_EQ(ParseDate(u"2002-07-01", kSwedish), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"7/1/2002", kUs), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"01.07.2002", kGerman), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"2002-07-01", kUs), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"02-07-01", kSwedish), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"1/2/29", kUs), Day(2029, 1, 2));
  EXPECT_EQ(ParseDate(u"1/2/30", kUs), Day(1930, 1, 2));
}

TEST(DateReading, ChangesMonthAndDayWhereTheMonthCannotBeOne) {
  EXPECT_EQ(ParseDate(u"16/11/2026", kUs), Day(2026, 11, 16));
  EXPECT_EQ(ParseDate(u"11.16.2026", kGerman), Day(2026, 11, 16));
  EXPECT_EQ(ParseDate(u"2026-16-11", kSwedish), Day(2026, 11, 16));
}

TEST(DateReading, TakesATimeBehindTheDateOrAlone) {
  EXPECT_EQ(ParseDate(u"2026-11-16 14:05:09", kSwedish), Time(2026, 11, 16, 14, 5, 9));
  EXPECT_EQ(ParseDate(u"11/16/2026 2:05 PM", kUs), Time(2026, 11, 16, 14, 5));
  EXPECT_EQ(ParseDate(u"11/16/2026 12:05:00 am", kUs), Time(2026, 11, 16, 0, 5));
  EXPECT_EQ(ParseDate(u"12:00", kSwedish), Date{0.5});
}

TEST(DateTexts, OfPicturesWithABlankBehindTheSeparatorOrOneAtTheEndAreRead) {
  const Regional czech{.shortDate = u"d. M. yyyy", .twelveHourClock = false};
  const Regional hungarian{.shortDate = u"yyyy. MM. dd.", .twelveHourClock = false};
  const Regional croatian{.shortDate = u"d.M.yyyy.", .twelveHourClock = false};
  for (const Regional& regional : {czech, hungarian, croatian}) {
    for (const Date date : {Day(2002, 7, 1), Day(1942, 12, 31), Time(2026, 11, 16, 14, 5)}) {
      EXPECT_EQ(ParseDate(DateText(date, regional), regional), date);
    }
  }
  EXPECT_EQ(ParseDate(u"1.  7. 2002", czech), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"2002. 07. 01", hungarian), Day(2002, 7, 1));
  EXPECT_FALSE(ParseDate(u"1. 7. 2002.", czech));
  EXPECT_FALSE(ParseDate(u"1.7.2002..", croatian));
  EXPECT_FALSE(ParseDate(u"1 .7.2002", czech));
  EXPECT_FALSE(ParseDate(u"1  7 2002", czech));
}

TEST(DateReading, RefusesWhatIsNoDate) {
  for (const auto* text : {u"",
                           u" ",
                           u"x",
                           u"2002-13-13",
                           u"2002-02-30",
                           u"2002",
                           u"20020701",
                           u"2002-07",
                           u"1-2/2003",
                           u"2002-07-01x",
                           u"2002-07-01 25:00",
                           u"2002-07-01 1:60",
                           u"0099-01-01",
                           u"10000-01-01",
                           u"2002--01",
                           u"2002-07-01 13:00 PM",
                           u"1/2/123",
                           u"2002-07-01 12",
                           u"-7-01-2002",
                           u"99/99/9999",
                           u"2002-07-01 12:00:61",
                           u"123456789012345678901-01-01"}) {
    EXPECT_FALSE(ParseDate(text, kSwedish)) << ToUtf8(text);
  }
  EXPECT_EQ(ErrorNumberOf([] { ToDate(u"i morgon", kSwedish); }), 13);
}

TEST(DateFormats, ReplaceTheirLettersInEitherCase) {
  EXPECT_EQ(FormatDate(Day(2026, 1, 5), u"mm-dd-yyyy"), u"01-05-2026");
  EXPECT_EQ(FormatDate(Day(2026, 1, 5), u"YYYYMMDD"), u"20260105");
  EXPECT_EQ(FormatDate(Day(2026, 1, 5), u"d.M.yy"), u"5.1.26");
  EXPECT_EQ(FormatTime(Time(2026, 1, 5, 4, 5, 6)), u"04:05:06");
}

TEST(DateArithmetic, AddsYearsAndCountsDays) {
  EXPECT_EQ(AddYears(Day(1942, 1, 1), 65), Day(2007, 1, 1));
  EXPECT_EQ(AddYears(Day(2000, 2, 29), 1), Day(2001, 2, 28));
  EXPECT_EQ(AddYears(Time(2000, 2, 28, 10, 0), 4), Time(2004, 2, 28, 10, 0));
  EXPECT_EQ(DaysBetween(Time(2007, 1, 1, 23, 59), Day(2007, 1, 2)), 1);
  EXPECT_EQ(DaysBetween(Day(2007, 1, 2), Day(2007, 1, 1)), -1);
  EXPECT_EQ(DayOf(Time(2007, 1, 1, 23, 59)), Day(2007, 1, 1));
}

}  // namespace
}  // namespace automation
