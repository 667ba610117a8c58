#include "util/ssn.h"

#include "util_fixture.h"

namespace util {
namespace {

class MakeSsn : public UtilTest {
 protected:
  MakeSsn() { clock.now = {2026, 11, 16, 14, 5, 0}; }
};

TEST_F(MakeSsn, IdentityNumberIsBirthDateSeparatorAndNumber) {
  EXPECT_EQ(MakeSSN(Day(1945, 1, 1), u"1234", true), u"19450101-1234");
}

TEST_F(MakeSsn, ShortIdentityNumberIsTheLastElevenCharacters) {
  EXPECT_EQ(MakeSSN(Day(1945, 1, 1), u"1234", false), u"450101-1234");
  EXPECT_EQ(MakeSSN(Day(1920, 1, 1), u"1234", false), u"200101+1234");
}

TEST_F(MakeSsn, ShortIdentityNumberHasElevenCharactersWhateverTheNumbersLength) {
  EXPECT_EQ(MakeSSN(Day(1945, 1, 1), u"12", false), u"19450101-12");
  EXPECT_EQ(MakeSSN(Day(1945, 1, 1), u"", false), u"19450101-");
  EXPECT_EQ(MakeSSN(Day(1945, 1, 1), u"12345678901234", false), u"45678901234");
}

TEST_F(MakeSsn, IdentityNumberHasAPlusFromTheHundredthBirthday) {
  EXPECT_EQ(MakeSSN(Day(1926, 11, 16), u"1234", true), u"19261116+1234");
  EXPECT_EQ(MakeSSN(Day(1926, 11, 17), u"1234", true), u"19261117-1234");
  EXPECT_EQ(MakeSSN(Day(1926, 11, 15), u"1234", true), u"19261115+1234");
}

TEST_F(MakeSsn, HundredthBirthdayIsFoundByMonthBeforeDay) {
  EXPECT_EQ(MakeSSN(Day(1926, 12, 1), u"1234", true), u"19261201-1234");
  EXPECT_EQ(MakeSSN(Day(1926, 10, 31), u"1234", true), u"19261031+1234");
}

TEST_F(MakeSsn, HundredthBirthdayIgnoresTheTimeOfDay) {
  EXPECT_EQ(MakeSSN(automation::MakeDate({1926, 11, 16, 23, 59, 59}), u"1234", true),
            u"19261116+1234");
}

TEST_F(MakeSsn, PatientBornTomorrowHasAMinusInTheIdentityNumber) {
  EXPECT_EQ(MakeSSN(Day(2026, 11, 17), u"1234", true), u"20261117-1234");
}

TEST_F(MakeSsn, PersNrIsUnchangedInTheIdentityNumber) {
  EXPECT_EQ(MakeSSN(Day(1945, 1, 1), 234, true), u"19450101-234");
  EXPECT_EQ(MakeSSN(Day(1945, 1, 1), u" 12-34 ", true), u"19450101- 12-34 ");
}

TEST_F(MakeSsn, NullPersNrAddsNothingToTheIdentityNumber) {
  EXPECT_EQ(MakeSSN(Day(1945, 1, 1), automation::Null(), true), u"19450101-");
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(MakeSsn, IdentityNumberIsTheSameInEveryLocale) {
  UseUsLocale();
  EXPECT_EQ(MakeSSN(Day(1945, 1, 31), u"1234", true), u"19450131-1234");
}

TEST_F(MakeSsn, IdentityNumberHasFourDigitYears) {
  EXPECT_EQ(MakeSSN(Day(100, 1, 1), u"1234", true), u"01000101+1234");
}

TEST_F(MakeSsn, BirthDateOutsideTheCalendarShowsOverflowAndGivesNoIdentityNumber) {
  EXPECT_EQ(MakeSSN(kNoDate, u"1234", true), u"");
  EXPECT_EQ(dialogs.shown, Boxes{ErrorBox(u"6 Overflow in MakeSSN")});
}

}  // namespace
}  // namespace util
