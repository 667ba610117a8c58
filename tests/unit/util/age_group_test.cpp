#include "util/rate_compensation.h"
#include "util_fixture.h"

namespace util {
namespace {

class PatientAgeGroup : public UtilTest {};

TEST_F(PatientAgeGroup, AgeGroupChangesWithTheCalendarYearOfTheBirthday) {
  const auto groupOf = [](int birthYear) {
    return GetAgeGroup(Day(birthYear, 6, 15), Day(2020, 6, 14)).Value();
  };
  EXPECT_EQ(groupOf(2020), AgeGroup::Under20);
  EXPECT_EQ(groupOf(2001), AgeGroup::Under20);
  EXPECT_EQ(groupOf(2000), AgeGroup::From20To29);
  EXPECT_EQ(groupOf(1991), AgeGroup::From20To29);
  EXPECT_EQ(groupOf(1990), AgeGroup::From30To64);
  EXPECT_EQ(groupOf(1956), AgeGroup::From30To64);
  EXPECT_EQ(groupOf(1955), AgeGroup::From65);
  EXPECT_EQ(groupOf(1900), AgeGroup::From65);
}

TEST_F(PatientAgeGroup, PatientBornOn31December2000Is20On1January2020) {
  EXPECT_EQ(GetAgeGroup(Day(2000, 12, 31), Day(2020, 1, 1)).Value(), AgeGroup::From20To29);
}

TEST_F(PatientAgeGroup, AgeGroupIsTheSameOnEveryDayOfAYear) {
  EXPECT_EQ(GetAgeGroup(Day(1955, 7, 1), Day(2020, 1, 1)).Value(), AgeGroup::From65);
  EXPECT_EQ(GetAgeGroup(Day(1955, 7, 1), Day(2020, 12, 31)).Value(), AgeGroup::From65);
  EXPECT_EQ(GetAgeGroup(Day(1955, 1, 1), Day(2019, 12, 31)).Value(), AgeGroup::From30To64);
}

TEST_F(PatientAgeGroup, PatientBornAfterTheReferenceDateIsInTheYoungestGroup) {
  EXPECT_EQ(GetAgeGroup(Day(2030, 1, 1), Day(2020, 1, 1)).Value(), AgeGroup::Under20);
}

TEST_F(PatientAgeGroup, AgeGroupIsKnownInTheCalendarsFirstAndLastYears) {
  EXPECT_EQ(GetAgeGroup(Day(100, 1, 1), Day(9999, 12, 31)).Value(), AgeGroup::From65);
  EXPECT_EQ(GetAgeGroup(Day(9999, 12, 31), Day(100, 1, 1)).Value(), AgeGroup::Under20);
}

TEST_F(PatientAgeGroup, DateOutsideTheCalendarShowsOverflowAndGivesNoAgeGroup) {
  EXPECT_TRUE(GetAgeGroup(kNoDate, Day(2020, 1, 1)).Failed());
  EXPECT_TRUE(GetAgeGroup(Day(2020, 1, 1), kNoDate).Failed());
  EXPECT_EQ(dialogs.shown, Boxes(2, ErrorBox(u"6 Overflow in GetAgeGroup")));
}

}  // namespace
}  // namespace util
