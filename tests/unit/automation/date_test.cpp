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

TEST(Dates, DatesCountDaysFromTheEpochAndBack) {
  EXPECT_EQ(Day(1899, 12, 30).days, 0);
  EXPECT_EQ(Day(1900, 1, 1).days, 2);
  EXPECT_EQ(Day(2026, 11, 16).days, 46342);
  EXPECT_EQ(Time(1899, 12, 29, 6, 0).days, -1.25);
  for (const Date date : {Day(100, 1, 1), Time(9999, 12, 31, 23, 59, 59), Time(1899, 12, 29, 6, 0),
                          Time(2000, 2, 29, 12, 34, 56)}) {
    EXPECT_EQ(MakeDate(PartsOf(date)), date);
  }
}

TEST(Dates, DatesRoundToTheNearestSecondAcrossMidnight) {
  EXPECT_EQ(PartsOf({45000.9999999}), PartsOf({45001.0}));
}

TEST(Dates, DateOutsideTheCalendarRaisesOverflow) {
  EXPECT_EQ(ErrorNumberOf([] { PartsOf({3000000}); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { PartsOf({-700000}); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { PartsOf({1e300}); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { ToDate(1e9, kUs); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { MakeDate({2001, 2, 29, 0, 0, 0}); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { AddYears(Day(9999, 1, 1), 1); }), 5);
}

TEST(DateTexts, DateTextFollowsTheLocalesShortDateAndClock) {
  EXPECT_EQ(DateText(Day(2026, 1, 5), kSwedish), u"2026-01-05");
  EXPECT_EQ(DateText(Day(2026, 1, 5), kUs), u"1/5/2026");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 14, 5), kSwedish), u"2026-01-05 14:05:00");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 14, 5), kUs), u"1/5/2026 2:05:00 PM");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 0, 0, 1), kUs), u"1/5/2026 12:00:01 AM");
  EXPECT_EQ(DateText({0.5}, kSwedish), u"12:00:00");
  EXPECT_EQ(DateText({0}, kUs), u"12:00:00 AM");
}

TEST(DateReading, DateIsReadInTheLocalesOrder) {
  EXPECT_EQ(ParseDate(u"2002-07-01", kSwedish), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"7/1/2002", kUs), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"01.07.2002", kGerman), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"2002-07-01", kUs), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"02-07-01", kSwedish), Day(2002, 7, 1));
  EXPECT_EQ(ParseDate(u"1/2/29", kUs), Day(2029, 1, 2));
  EXPECT_EQ(ParseDate(u"1/2/30", kUs), Day(1930, 1, 2));
}

TEST(DateReading, MonthAndDayAreSwappedWhenTheMonthIsImpossible) {
  EXPECT_EQ(ParseDate(u"16/11/2026", kUs), Day(2026, 11, 16));
  EXPECT_EQ(ParseDate(u"11.16.2026", kGerman), Day(2026, 11, 16));
  EXPECT_EQ(ParseDate(u"2026-16-11", kSwedish), Day(2026, 11, 16));
}

TEST(DateReading, TimeIsReadAfterADateOrWithoutOne) {
  EXPECT_EQ(ParseDate(u"2026-11-16 14:05:09", kSwedish), Time(2026, 11, 16, 14, 5, 9));
  EXPECT_EQ(ParseDate(u"11/16/2026 2:05 PM", kUs), Time(2026, 11, 16, 14, 5));
  EXPECT_EQ(ParseDate(u"11/16/2026 12:05:00 am", kUs), Time(2026, 11, 16, 0, 5));
  EXPECT_EQ(ParseDate(u"12:00", kSwedish), Date{0.5});
}

TEST(DateTexts, DateTextWithABlankOrFinalSeparatorIsRead) {
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

TEST(DateReading, TextThatIsNotADateIsRefused) {
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

TEST(DateFormats, DateFormatLettersOfEitherCaseAreReplaced) {
  EXPECT_EQ(FormatDate(Day(2026, 1, 5), u"mm-dd-yyyy"), u"01-05-2026");
  EXPECT_EQ(FormatDate(Day(2026, 1, 5), u"YYYYMMDD"), u"20260105");
  EXPECT_EQ(FormatDate(Day(2026, 1, 5), u"d.M.yy"), u"5.1.26");
  EXPECT_EQ(FormatTime(Time(2026, 1, 5, 4, 5, 6)), u"04:05:06");
}

TEST(DateArithmetic, YearsAreAddedAndDaysCounted) {
  EXPECT_EQ(AddYears(Day(1942, 1, 1), 65), Day(2007, 1, 1));
  EXPECT_EQ(AddYears(Day(2000, 2, 29), 1), Day(2001, 2, 28));
  EXPECT_EQ(AddYears(Time(2000, 2, 28, 10, 0), 4), Time(2004, 2, 28, 10, 0));
  EXPECT_EQ(DaysBetween(Time(2007, 1, 1, 23, 59), Day(2007, 1, 2)), 1);
  EXPECT_EQ(DaysBetween(Day(2007, 1, 2), Day(2007, 1, 1)), -1);
  EXPECT_EQ(DayOf(Time(2007, 1, 1, 23, 59)), Day(2007, 1, 1));
}

TEST(Dates, DatePartsStayWithinTheirBounds) {
  const auto makes = [](const DateParts& parts) {
    return ErrorNumberOf([&] { MakeDate(parts); }) == 0;
  };
  EXPECT_TRUE(makes({100, 1, 1, 0, 0, 0}));
  EXPECT_TRUE(makes({9999, 12, 31, 23, 59, 59}));
  for (const DateParts& parts : {DateParts{99, 12, 31, 0, 0, 0}, DateParts{10000, 1, 1, 0, 0, 0},
                                 DateParts{2026, 0, 1, 0, 0, 0}, DateParts{2026, 13, 1, 0, 0, 0},
                                 DateParts{2026, 1, 0, 0, 0, 0}, DateParts{2026, 1, 32, 0, 0, 0},
                                 DateParts{2026, 1, 257, 0, 0, 0}, DateParts{2026, 257, 1, 0, 0, 0},
                                 DateParts{2026, 4, 31, 0, 0, 0}, DateParts{2026, 1, 1, 24, 0, 0},
                                 DateParts{2026, 1, 1, -1, 0, 0}, DateParts{2026, 1, 1, 0, 60, 0},
                                 DateParts{2026, 1, 1, 0, -1, 0}, DateParts{2026, 1, 1, 0, 0, 60},
                                 DateParts{2026, 1, 1, 0, 0, -1}, DateParts{2026, -255, 1, 0, 0, 0},
                                 DateParts{2026, 1, -255, 0, 0, 0}}) {
    EXPECT_FALSE(makes(parts)) << testing::PrintToString(parts);
  }
}

TEST(Dates, DatesEndWithTheCalendarsFirstAndLastDay) {
  EXPECT_EQ(Day(100, 1, 1).days, -657434);
  EXPECT_EQ(Day(9999, 12, 31).days, 2958465);
  EXPECT_EQ(PartsOf({-657434.75}), (DateParts{100, 1, 1, 18, 0, 0}));
  EXPECT_EQ(PartsOf({2958465.75}), (DateParts{9999, 12, 31, 18, 0, 0}));
  EXPECT_EQ(ErrorNumberOf([] { PartsOf({-657435}); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { PartsOf({2958466}); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { PartsOf({2958465.9999999}); }), 6);
}

TEST(Dates, DateOfDayZeroEndsWithTheDay) {
  EXPECT_EQ(PartsOf({0}), DateParts());
  EXPECT_EQ(DateParts(), (DateParts{1899, 12, 30, 0, 0, 0}));
  EXPECT_EQ(Date().days, 0);
}

TEST(DateTexts, DateTextLeavesOutDayZeroAndMidnight) {
  EXPECT_EQ(DateText(Day(1899, 12, 31), kSwedish), u"1899-12-31");
  EXPECT_EQ(DateText(Day(1899, 11, 30), kSwedish), u"1899-11-30");
  EXPECT_EQ(DateText(Day(1900, 12, 30), kSwedish), u"1900-12-30");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 1, 0), kSwedish), u"2026-01-05 01:00:00");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 0, 1), kSwedish), u"2026-01-05 00:01:00");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 0, 0, 1), kSwedish), u"2026-01-05 00:00:01");
}

TEST(DateTexts, TwelveHourClockTextTurnsAtNoon) {
  EXPECT_EQ(DateText(Time(2026, 1, 5, 11, 59, 59), kUs), u"1/5/2026 11:59:59 AM");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 12, 0), kUs), u"1/5/2026 12:00:00 PM");
  EXPECT_EQ(DateText(Time(2026, 1, 5, 13, 0), kUs), u"1/5/2026 1:00:00 PM");
  const Regional named{.timeSeparator = u".", .amText = u"fm", .pmText = u"em"};
  EXPECT_EQ(DateText(Time(2026, 1, 5, 14, 5), named), u"1/5/2026 2.05.00 em");
  EXPECT_EQ(ParseDate(u"1/5/2026 2.05.09 EM", named), Time(2026, 1, 5, 14, 5, 9));
  EXPECT_EQ(ParseDate(u"1/5/2026 2.05 fm", named), Time(2026, 1, 5, 2, 5));
  EXPECT_EQ(ParseDate(u"1/5/2026 2.05 AM", named), Time(2026, 1, 5, 2, 5));
  EXPECT_EQ(ParseDate(u"1/5/2026 2.05 pm", named), Time(2026, 1, 5, 14, 5));
  EXPECT_EQ(ParseDate(u"12.00", named), Date{0.5});
  EXPECT_EQ(ParseDate(u"12:00", named), Date{0.5});
}

TEST(DateReading, TwelveHourClockHoursAreFromOneToTwelve) {
  EXPECT_EQ(ParseDate(u"1/5/2026 12:00 PM", kUs), Time(2026, 1, 5, 12, 0));
  EXPECT_EQ(ParseDate(u"1/5/2026 11:59:59 PM", kUs), Time(2026, 1, 5, 23, 59, 59));
  EXPECT_EQ(ParseDate(u"1/5/2026 1:00  AM", kUs), Time(2026, 1, 5, 1, 0));
  EXPECT_FALSE(ParseDate(u"1/5/2026 0:30 AM", kUs));
  EXPECT_FALSE(ParseDate(u"1/5/2026 13:00 AM", kUs));
  EXPECT_FALSE(ParseDate(u"1/5/2026 1:00 XM", kUs));
  EXPECT_FALSE(ParseDate(u"1/5/2026 1:00 PM x", kUs));
  EXPECT_FALSE(ParseDate(u"1/5/2026 1:00PM", kUs));
}

TEST(DateReading, TimePartsHaveUpToTwoDigitsAndEndBeforeMidnight) {
  EXPECT_EQ(ParseDate(u"2026-01-05 23:59:59", kSwedish), Time(2026, 1, 5, 23, 59, 59));
  EXPECT_EQ(ParseDate(u"2026-01-05  1:2:3", kSwedish), Time(2026, 1, 5, 1, 2, 3));
  for (const auto* text :
       {u"2026-01-05 24:00", u"2026-01-05 23:60", u"2026-01-05 001:00", u"2026-01-05 1:000",
        u"2026-01-05 1:00:000", u"2026-01-05 1:", u"2026-01-05 1:00:", u"2026-01-05 :00",
        u"2026-01-05 1.00", u"2026-01-05 1:00 x", u"2026-01-051:00"}) {
    EXPECT_FALSE(ParseDate(text, kSwedish)) << ToUtf8(text);
  }
}

TEST(DateReading, YearHasOneTwoOrFourDigits) {
  EXPECT_EQ(ParseDate(u"1/2/5", kUs), Day(2005, 1, 2));
  EXPECT_EQ(ParseDate(u"1/2/0", kUs), Day(2000, 1, 2));
  EXPECT_EQ(ParseDate(u"1/2/99", kUs), Day(1999, 1, 2));
  EXPECT_EQ(ParseDate(u"1/2/0100", kUs), Day(100, 1, 2));
  EXPECT_FALSE(ParseDate(u"1/2/20026", kUs));
  EXPECT_FALSE(ParseDate(u"1/2/01999", kUs));
  EXPECT_FALSE(ParseDate(u"001/2/2026", kUs));
  EXPECT_FALSE(ParseDate(u"1/002/2026", kUs));
  EXPECT_FALSE(ParseDate(u"2026-001-02", kSwedish));
}

TEST(DateReading, YearIsReadFirstInAYearFirstPictureUnlessItStandsLast) {
  EXPECT_EQ(ParseDate(u"01-02-2003", kSwedish), Day(2003, 1, 2));
  EXPECT_EQ(ParseDate(u"01-02-03", kSwedish), Day(2001, 2, 3));
  EXPECT_EQ(ParseDate(u"01.02.03", kGerman), Day(2003, 2, 1));
  const Regional upper{.shortDate = u"YYYY-MM-DD"};
  EXPECT_EQ(ParseDate(u"01-02-03", upper), Day(2001, 2, 3));
  const Regional dayFirst{.shortDate = u"DD.MM.YYYY"};
  EXPECT_EQ(ParseDate(u"01.02.2003", dayFirst), Day(2003, 2, 1));
}

TEST(DateReading, MonthAndDayAreSwappedFromThirteenOnOnly) {
  EXPECT_EQ(ParseDate(u"13/12/2026", kUs), Day(2026, 12, 13));
  EXPECT_EQ(ParseDate(u"2026-13-12", kSwedish), Day(2026, 12, 13));
  EXPECT_FALSE(ParseDate(u"2/30/2026", kUs));
  EXPECT_FALSE(ParseDate(u"0/12/2026", kUs));
  EXPECT_FALSE(ParseDate(u"12/0/2026", kUs));
  EXPECT_FALSE(ParseDate(u"2026-00-12", kSwedish));
  EXPECT_FALSE(ParseDate(u"2026-12-00", kSwedish));
}

TEST(DateReading, DoubledSeparatorsOfThePictureAreRead) {
  const Regional uzbek{.shortDate = u"dd/MM yyyy", .twelveHourClock = false};
  for (const Date date : {Day(2002, 7, 1), Day(1942, 12, 31), Time(2026, 11, 16, 14, 5)}) {
    EXPECT_EQ(ParseDate(DateText(date, uzbek), uzbek), date);
  }
  EXPECT_EQ(ParseDate(u"1/7/2002", uzbek), Day(2002, 7, 1));
  for (const auto* text : {u"1-7 2002", u"1 7/2002", u"1/7-2002", u"1/7", u"1/7 2002 1"}) {
    EXPECT_FALSE(ParseDate(text, uzbek)) << ToUtf8(text);
  }
  EXPECT_FALSE(ParseDate(u"1/7 2002", kUs));
}

TEST(DateReading, MonthAndWeekdayNamesAreNotRead) {
  for (const auto* text : {u"1 jul 2002", u"1-Jul-2002", u"Mon 1/7/2002", u"1/7/2002 Mon"}) {
    EXPECT_FALSE(ParseDate(text, kUs)) << ToUtf8(text);
  }
}

// Unlike in the runtime, no other order is tried for a two-digit year.
TEST(DateReading, ImpossibleDateIsNotReadInAnotherOrder) {
  for (const auto* text : {u"2/30/02", u"13/13/02", u"2/30/2002", u"30/2/2002"}) {
    EXPECT_FALSE(ParseDate(text, kUs)) << ToUtf8(text);
  }
}

TEST(DateTexts, DateTextHasNumbersInPlaceOfNames) {
  const Regional words{.shortDate = u"ddd d MMM yyyy", .twelveHourClock = false};
  EXPECT_EQ(DateText(Day(2026, 1, 5), words), u"05 5 01 2026");
}

TEST(DateReading, EveryDateSeparatorIsRead) {
  for (const auto* text : {u"2002-7-1", u"2002/7/1", u"2002.7.1", u"2002 7 1"}) {
    EXPECT_EQ(ParseDate(text, kSwedish), Day(2002, 7, 1)) << ToUtf8(text);
  }
  EXPECT_FALSE(ParseDate(u"2002_7_1", kSwedish));
  EXPECT_FALSE(ParseDate(u"2002-7", kSwedish));
  EXPECT_FALSE(ParseDate(u"2002-7-", kSwedish));
}

TEST(DateFormats, DaysAndMonthsArePaddedToTwoDigitsAtMost) {
  EXPECT_EQ(FormatDate(Day(2026, 1, 5), u"DDD.MMM.YYY"), u"05.01.2026");
  EXPECT_EQ(FormatDate(Day(2026, 1, 5), u"D/M/Y"), u"5/1/26");
  EXPECT_EQ(FormatDate(Day(2007, 1, 5), u"y"), u"07");
  EXPECT_EQ(FormatDate(Day(2026, 1, 5), u"..x"), u"..x");
  EXPECT_EQ(FormatDate(Day(226, 11, 15), u"yyyy-m-d"), u"0226-11-15");
}

TEST(DateArithmetic, LeapDayIsKeptInLeapYearsOnly) {
  EXPECT_EQ(AddYears(Day(2000, 2, 29), 4), Day(2004, 2, 29));
  EXPECT_EQ(AddYears(Day(2000, 2, 29), -100), Day(1900, 2, 28));
  EXPECT_EQ(AddYears(Day(2000, 3, 29), 1), Day(2001, 3, 29));
  EXPECT_EQ(DayOf(Time(2007, 1, 1, 0, 59, 1)), Day(2007, 1, 1));
}

}  // namespace
}  // namespace automation
