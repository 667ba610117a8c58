#include "util/age_group.h"

#include "util_fixture.h"

namespace util {
namespace {

class AgeGroup : public UtilTest {};

TEST_F(AgeGroup, ChangesWithTheCalendarYearInWhichTheAgeIsReached) {
  const auto groupOf = [](int birthYear) {
    return GetAgeGroup(Day(birthYear, 6, 15), Day(2020, 6, 14));
  };
  EXPECT_EQ(groupOf(2020), kUnder20);
  EXPECT_EQ(groupOf(2001), kUnder20);
  EXPECT_EQ(groupOf(2000), kFrom20To29);
  EXPECT_EQ(groupOf(1991), kFrom20To29);
  EXPECT_EQ(groupOf(1990), kFrom30To64);
  EXPECT_EQ(groupOf(1956), kFrom30To64);
  EXPECT_EQ(groupOf(1955), kFrom65);
  EXPECT_EQ(groupOf(1900), kFrom65);
}

TEST_F(AgeGroup, CountsOneBornOnTheLastDayOfTheYear2000As20OnTheFirstOf2020) {
  EXPECT_EQ(GetAgeGroup(Day(2000, 12, 31), Day(2020, 1, 1)), kFrom20To29);
}

TEST_F(AgeGroup, IsTheSameOnEveryDayOfAYear) {
  EXPECT_EQ(GetAgeGroup(Day(1955, 7, 1), Day(2020, 1, 1)), kFrom65);
  EXPECT_EQ(GetAgeGroup(Day(1955, 7, 1), Day(2020, 12, 31)), kFrom65);
  EXPECT_EQ(GetAgeGroup(Day(1955, 1, 1), Day(2019, 12, 31)), kFrom30To64);
}

TEST_F(AgeGroup, IsTheYoungestForAPatientBornLaterThanTheReference) {
  EXPECT_EQ(GetAgeGroup(Day(2030, 1, 1), Day(2020, 1, 1)), kUnder20);
}

TEST_F(AgeGroup, TakesTheCalendarsFirstAndLastYears) {
  EXPECT_EQ(GetAgeGroup(Day(100, 1, 1), Day(9999, 12, 31)), kFrom65);
  EXPECT_EQ(GetAgeGroup(Day(9999, 12, 31), Day(100, 1, 1)), kUnder20);
}

TEST_F(AgeGroup, ShowsADateOutsideTheCalendarAndIsZero) {
  EXPECT_EQ(GetAgeGroup(kNoDate, Day(2020, 1, 1)), 0);
  EXPECT_EQ(GetAgeGroup(Day(2020, 1, 1), kNoDate), 0);
  EXPECT_EQ(dialogs.shown, Boxes(2, ErrorBox(u"6 Overflow in GetAgeGroup")));
}

}  // namespace
}  // namespace util
