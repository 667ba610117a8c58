#include "util/subsidy_period.h"

#include <limits>
#include <vector>

#include "util_fixture.h"

namespace util {
namespace {

const automation::Date kLastDayOfMarch = Day(2002, 3, 31);
const automation::Date kFirstOfApril = Day(2002, 4, 1);
const automation::Date kLastDayOfJune = Day(2002, 6, 30);
const automation::Date kFirstOfJuly = Day(2002, 7, 1);

// Debit codes other than the one of the elderly.
const std::vector<std::u16string> kOtherDebits = {u"", u"A", u"ä", u"Ä ", u"T"};

const std::vector<std::int32_t> kBasicCareRates = {std::numeric_limits<std::int32_t>::min(),
                                                   -1,
                                                   0,
                                                   1,
                                                   11,
                                                   12,
                                                   58,
                                                   59,
                                                   70,
                                                   71,
                                                   72,
                                                   73,
                                                   74,
                                                   75,
                                                   76,
                                                   78,
                                                   79};
const std::vector<std::int32_t> kRatesWithoutAddition = {91, 92, 93, 97, 98};
const std::vector<std::int32_t> kProstheticRates = {
    60,  61,  69,  77,  80,
    81,  90,  94,  95,  96,
    100, 101, 681, 682, std::numeric_limits<std::int32_t>::max()};

class SubsidyPeriod : public UtilTest {
 protected:
  // Whether the rows of this rate change to the newer rules on the first of July, and not before.
  static void ExpectChangeInJuly(std::int32_t rateNo, std::u16string_view debit) {
    SCOPED_TRACE(rateNo);
    EXPECT_TRUE(IsInSubsidyPeriod(rateNo, Day(1999, 1, 1), debit));
    EXPECT_TRUE(IsInSubsidyPeriod(rateNo, kFirstOfApril, debit));
    EXPECT_TRUE(IsInSubsidyPeriod(rateNo, kLastDayOfJune, debit));
    EXPECT_FALSE(IsInSubsidyPeriod(rateNo, kFirstOfJuly, debit));
  }
};

TEST_F(SubsidyPeriod, OlderRulesForBasicCareEndBefore1July2002) {
  for (const auto rateNo : kBasicCareRates) {
    ExpectChangeInJuly(rateNo, kElderlyDebit);
    for (const auto& debit : kOtherDebits) {
      ExpectChangeInJuly(rateNo, debit);
    }
  }
}

TEST_F(SubsidyPeriod, OlderRulesForRatesWithoutAdditionEndBefore1July2002) {
  for (const auto rateNo : kRatesWithoutAddition) {
    ExpectChangeInJuly(rateNo, kElderlyDebit);
    ExpectChangeInJuly(rateNo, u"");
  }
}

TEST_F(SubsidyPeriod, OlderRulesForTheShareOfTheFeeEndBefore1July2002) {
  ExpectChangeInJuly(99, kElderlyDebit);
  ExpectChangeInJuly(99, u"");
}

TEST_F(SubsidyPeriod, OlderRulesForTheElderlysProstheticsEndBefore1April2002) {
  for (const auto rateNo : kProstheticRates) {
    SCOPED_TRACE(rateNo);
    EXPECT_TRUE(IsInSubsidyPeriod(rateNo, Day(1999, 1, 1), kElderlyDebit));
    EXPECT_TRUE(IsInSubsidyPeriod(rateNo, kLastDayOfMarch, kElderlyDebit));
    EXPECT_FALSE(IsInSubsidyPeriod(rateNo, kFirstOfApril, kElderlyDebit));
    EXPECT_FALSE(IsInSubsidyPeriod(rateNo, kLastDayOfJune, kElderlyDebit));
    EXPECT_FALSE(IsInSubsidyPeriod(rateNo, kFirstOfJuly, kElderlyDebit));
  }
}

TEST_F(SubsidyPeriod, OlderRulesForOtherProstheticsEndBefore1July2002) {
  for (const auto rateNo : kProstheticRates) {
    for (const auto& debit : kOtherDebits) {
      ExpectChangeInJuly(rateNo, debit);
    }
  }
}

TEST_F(SubsidyPeriod, OlderRulesApplyToNoRateFrom1July2002) {
  for (std::int32_t rateNo = -10; rateNo <= 1000; ++rateNo) {
    for (const auto& day : {kFirstOfJuly, Day(2026, 11, 16), Day(9999, 12, 31)}) {
      EXPECT_FALSE(IsInSubsidyPeriod(rateNo, day, kElderlyDebit)) << rateNo;
      EXPECT_FALSE(IsInSubsidyPeriod(rateNo, day, u"")) << rateNo;
    }
  }
}

TEST_F(SubsidyPeriod, OlderRulesApplyToTheWholeLastDay) {
  EXPECT_TRUE(IsInSubsidyPeriod(11, automation::MakeDate({2002, 6, 30, 23, 59, 59}), u""));
  EXPECT_FALSE(IsInSubsidyPeriod(11, automation::MakeDate({2002, 7, 1, 0, 0, 1}), u""));
}

TEST_F(SubsidyPeriod, SubsidyPeriodIsTheSameUnderSwedishUsAndNorwegianSettings) {
  UseUsLocale();
  ExpectChangeInJuly(11, kElderlyDebit);
  EXPECT_TRUE(IsInSubsidyPeriod(61, kLastDayOfMarch, kElderlyDebit));
  EXPECT_FALSE(IsInSubsidyPeriod(61, kFirstOfApril, kElderlyDebit));
  UseNorwegianLocale();
  ExpectChangeInJuly(11, kElderlyDebit);
}

TEST_F(SubsidyPeriod, DateFormatWithoutADateEndsTheOlderRules) {
  CurrentSettings().gDateFormat = u"";
  EXPECT_FALSE(IsInSubsidyPeriod(11, Day(2001, 1, 1), u""));
  EXPECT_TRUE(dialogs.shown.empty());
}

// As above: the dates of 2002 do not match such a format.
TEST_F(SubsidyPeriod, DateFormatWithNamesEndsTheOlderRules) {
  for (const auto* picture : {u"dd-MMM-YYYY", u"ddd yyyy-MM-dd", u"d MMMM yyyy"}) {
    CurrentSettings().gDateFormat = picture;
    EXPECT_FALSE(IsInSubsidyPeriod(11, Day(2001, 1, 1), u""));
    EXPECT_FALSE(IsInSubsidyPeriod(61, Day(2001, 1, 1), kElderlyDebit));
  }
  EXPECT_TRUE(dialogs.shown.empty());
}

// Kept: in a format without a year, the last part of the boundary is taken for one: 01.07.07.
TEST_F(SubsidyPeriod, DateFormatWithoutAYearMovesTheBoundary) {
  CurrentSettings().gDateFormat = u"dd.MM.M";
  locale.regional.shortDate = u"dd.MM.M";
  EXPECT_TRUE(IsInSubsidyPeriod(11, Day(2007, 6, 30), u""));
  EXPECT_FALSE(IsInSubsidyPeriod(11, Day(2007, 7, 1), u""));
  EXPECT_TRUE(IsInSubsidyPeriod(61, Day(2004, 3, 31), kElderlyDebit));
  EXPECT_FALSE(IsInSubsidyPeriod(61, Day(2004, 4, 1), kElderlyDebit));
}

TEST_F(SubsidyPeriod, SubsidyPeriodIsKnownForEveryRegistrationDate) {
  EXPECT_FALSE(IsInSubsidyPeriod(11, kNoDate, u""));
  EXPECT_TRUE(IsInSubsidyPeriod(11, {-1e9}, u""));
  EXPECT_TRUE(dialogs.shown.empty());
}

}  // namespace
}  // namespace util
