#include "util/date_format.h"

#include <string_view>

#include "automation/text.h"
#include "util_fixture.h"

namespace util {
namespace {

using automation::Date;

class LanguageDateFormat : public UtilTest {
 protected:
  std::u16string For(std::u16string_view systemAnswer) {
    locale.shortDateAnswer = systemAnswer;
    return GetLanguageDateFormat();
  }
  std::u16string ForLanguage(std::int16_t language) {
    CurrentSettings().gKestraLangID = language;
    return For(u"");
  }
};

TEST_F(LanguageDateFormat, SessionDateFormatIsTheSystemsShortDate) {
  EXPECT_EQ(For(u"yyyy-MM-dd"), u"yyyy-MM-dd");
  EXPECT_EQ(For(u"M/d/yyyy"), u"M/d/yyyy");
  EXPECT_EQ(For(u"d.M.YYYY"), u"d.M.YYYY");
}

TEST_F(LanguageDateFormat, SessionDateFormatHasAFourDigitYear) {
  EXPECT_EQ(For(u"yy-MM-dd"), u"YYYY-MM-dd");
  EXPECT_EQ(For(u"dd.MM.YY"), u"dd.MM.YYYY");
}

TEST_F(LanguageDateFormat, SessionDateFormatEndsAtTheFirstNul) {
  using namespace std::string_view_literals;
  EXPECT_EQ(For(u"yyyy-MM-dd\0rest"sv), u"yyyy-MM-dd");
  CurrentSettings().gKestraLangID = 2;
  EXPECT_EQ(For(u"\0yyyy-MM-dd"sv), u"DD-MM-YYYY");
}

TEST_F(LanguageDateFormat, SessionDateFormatFollowsTheHostsLanguageWithoutASystemFormat) {
  EXPECT_EQ(ForLanguage(1), u"YYYY-MM-DD");
  EXPECT_EQ(ForLanguage(2), u"DD-MM-YYYY");
  EXPECT_EQ(ForLanguage(3), u"DD.MM.YYYY");
  EXPECT_EQ(ForLanguage(4), u"DD/MM/YYYY");
  EXPECT_EQ(ForLanguage(5), u"DD/MM/YYYY");
  EXPECT_EQ(ForLanguage(0), u"DD.MM.YYYY");
  EXPECT_EQ(ForLanguage(6), u"DD.MM.YYYY");
  EXPECT_EQ(ForLanguage(-1), u"DD.MM.YYYY");
  EXPECT_EQ(ForLanguage(32767), u"DD.MM.YYYY");
}

// The user's settings cannot be read.
class NoLocale : public platform::Locale {
 public:
  automation::Regional Regional() override { Fail(); }
  std::u16string Info(std::int32_t /*item*/) override { Fail(); }

 private:
  [[noreturn]] static void Fail() {
    throw automation::AutomationError(automation::RuntimeError::InvalidProcedureCall);
  }
};

class WithoutALocale : public UtilTest {
 protected:
  WithoutALocale() { platform::Use(withoutLocale_); }

 private:
  NoLocale none_;
  platform::Platform withoutLocale_ = fakes::With(ports, none_);
};

TEST_F(WithoutALocale, FailingLocaleShowsErrorAndGivesNoDateFormat) {
  EXPECT_EQ(GetLanguageDateFormat(), u"");
  EXPECT_EQ(dialogs.shown,
            Boxes{ErrorBox(u"5 Invalid procedure call or argument in GetLanguageDateFormat")});
}

TEST_F(WithoutALocale, FailingLocaleShowsErrorAndGivesTheEmptyDateForParts) {
  EXPECT_EQ(DateFromParts(u"2002", u"07", u"01"), Date{});
  EXPECT_EQ(dialogs.shown,
            Boxes{ErrorBox(u"5 Invalid procedure call or argument in DateFromParts")});
}

class DateOfParts : public UtilTest {};

TEST_F(DateOfParts, DatePartsAreReadInTheSessionsFormat) {
  EXPECT_EQ(DateFromParts(u"2002", u"07", u"01"), Day(2002, 7, 1));
  UseUsLocale();
  EXPECT_EQ(DateFromParts(u"2002", u"07", u"01"), Day(2002, 7, 1));
  EXPECT_EQ(DateFromParts(u"2002", u"7", u"1"), Day(2002, 7, 1));
  UseNorwegianLocale();
  CurrentSettings().gDateFormat = u"DD.MM.YYYY";
  EXPECT_EQ(DateFromParts(u"2002", u"07", u"01"), Day(2002, 7, 1));
}

TEST_F(DateOfParts, DatePartsAreReadInTheSessionsFormatWhateverTheLocale) {
  UseUsLocale();
  CurrentSettings().gDateFormat = u"DD.MM.YYYY";
  EXPECT_EQ(DateFromParts(u"2002", u"07", u"01"), Day(2002, 7, 1));
  UseNorwegianLocale();
  CurrentSettings().gDateFormat = u"MM/DD/YYYY";
  EXPECT_EQ(DateFromParts(u"2002", u"07", u"01"), Day(2002, 7, 1));
}

TEST_F(DateOfParts, DatePartsAreReadInFormatsWithABlankOrFinalSeparator) {
  for (const auto* format : {u"d. M. yyyy", u"yyyy. MM. dd.", u"d.M.yyyy."}) {
    CurrentSettings().gDateFormat = format;
    EXPECT_EQ(DateFromParts(u"2002", u"7", u"1"), Day(2002, 7, 1));
  }
}

TEST_F(DateOfParts, DatePartsReplaceFormatLettersOfEitherCase) {
  CurrentSettings().gDateFormat = u"YyYy-mM-Dd";
  EXPECT_EQ(DateFromParts(u"2007", u"1", u"2"), Day(2007, 1, 2));
  CurrentSettings().gDateFormat = u"yyyy-m-d";
  EXPECT_EQ(DateFromParts(u"2007", u"12", u"31"), Day(2007, 12, 31));
}

TEST_F(DateOfParts, DatePartsAreReadInEverySwedishAndUsSystemFormat) {
  for (const auto* format : {u"yyyy-MM-dd", u"YYYY-MM-DD"}) {
    CurrentSettings().gDateFormat = format;
    EXPECT_EQ(DateFromParts(u"1942", u"3", u"15"), Day(1942, 3, 15));
  }
  UseUsLocale();
  for (const auto* format : {u"M/d/yyyy", u"MM/dd/yyyy"}) {
    CurrentSettings().gDateFormat = format;
    EXPECT_EQ(DateFromParts(u"1942", u"3", u"15"), Day(1942, 3, 15));
  }
}

TEST_F(DateOfParts, ImpossibleDatePartsGiveTheEmptyDate) {
  EXPECT_EQ(DateFromParts(u"2001", u"02", u"29"), Date{});
  EXPECT_EQ(DateFromParts(u"2001", u"13", u"32"), Date{});
  EXPECT_EQ(DateFromParts(u"", u"", u""), Date{});
  EXPECT_EQ(DateFromParts(u"2001", u"maj", u"1"), Date{});
  EXPECT_EQ(DateFromParts(u"99999", u"01", u"01"), Date{});
  EXPECT_EQ(DateFromParts(u"10000000000000000000", u"01", u"01"), Date{});
  UseNorwegianLocale();
  EXPECT_EQ(DateFromParts(u"2002", u"02", u"30"), Date{});
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(DateOfParts, MonthBeyondTwelveIsTakenAsTheDay) {
  EXPECT_EQ(DateFromParts(u"2002", u"13", u"05"), Day(2002, 5, 13));
  EXPECT_EQ(DateFromParts(u"2002", u"31", u"12"), Day(2002, 12, 31));
  EXPECT_EQ(DateFromParts(u"2002", u"13", u"13"), Date{});
  EXPECT_EQ(DateFromParts(u"2002", u"32", u"1"), Date{});
  EXPECT_EQ(DateFromParts(u"2002", u"30", u"2"), Date{});
  EXPECT_EQ(DateFromParts(u"2002", u"00", u"13"), Date{});
  UseUsLocale();
  EXPECT_EQ(DateFromParts(u"2002", u"13", u"05"), Day(2002, 5, 13));
  EXPECT_EQ(DateFromParts(u"2002", u"2", u"30"), Date{});
  UseNorwegianLocale();
  EXPECT_EQ(DateFromParts(u"2002", u"13", u"05"), Day(2002, 5, 13));
}

// The result for format letters that a numeric date does not have.
class DateOfPartsInWords : public UtilTest {
 protected:
  static void UsePicture(std::u16string_view picture) { CurrentSettings().gDateFormat = picture; }
};

// Short dates that Windows offers, or that people choose to see the weekday beside the clock.
const std::vector<std::u16string> kWithMonthNames = {
    u"dd-MMM-YYYY", u"d-MMM YYYY", u"d MMM yyyy", u"d MMMM yyyy", u"dd. MMM. yyyy", u"MMM-dd-yyyy"};
const std::vector<std::u16string> kWithOtherWords = {
    u"ddd yyyy-MM-dd",    u"yyyy-MM-dd ddd",         u"ddd d/M/yyyy",
    u"dddd, d MMMM yyyy", u"dddd 'den 'd MMMM yyyy", u"'den 'd MMMM yyyy",
    u"MMM d, yyyy",       u"d 'de' MMMM 'de' yyyy",  u"d.M.yyyy '\u0433.'"};

TEST_F(DateOfPartsInWords, TwoDigitPartsMakeNoDateInAFormatWithMonthNames) {
  for (const auto& pictures : {kWithMonthNames, kWithOtherWords}) {
    for (const auto& picture : pictures) {
      UsePicture(picture);
      for (const auto* month : {u"01", u"02", u"04", u"07", u"10", u"11", u"12"}) {
        EXPECT_EQ(DateFromParts(u"2002", month, u"01"), Date{}) << automation::ToUtf8(picture);
      }
    }
  }
  EXPECT_TRUE(dialogs.shown.empty());
}

// The month appears twice when the format has its name: "1" becomes "11".
TEST_F(DateOfPartsInWords, OneDigitMonthIsDoubledInAFormatWithMonthNames) {
  for (const auto& picture : kWithMonthNames) {
    SCOPED_TRACE(automation::ToUtf8(picture));
    UsePicture(picture);
    EXPECT_EQ(DateFromParts(u"2007", u"1", u"2"), Day(2007, 11, 2));
    EXPECT_EQ(DateFromParts(u"2007", u"1", u"30"), Day(2007, 11, 30));
    EXPECT_EQ(DateFromParts(u"2007", u"1", u"31"), Date{});
    // 22 is not a month and is swapped with the day.
    EXPECT_EQ(DateFromParts(u"2007", u"2", u"5"), Day(2007, 5, 22));
    EXPECT_EQ(DateFromParts(u"2007", u"2", u"13"), Date{});
    for (const auto* month : {u"3", u"4", u"5", u"6", u"7", u"8", u"9"}) {
      EXPECT_EQ(DateFromParts(u"2007", month, u"5"), Date{});
    }
  }
}

TEST_F(DateOfPartsInWords, FormatWithWeekdaysOrLettersMakesNoDate) {
  for (const auto& picture : kWithOtherWords) {
    SCOPED_TRACE(automation::ToUtf8(picture));
    UsePicture(picture);
    for (int month = 1; month <= 12; ++month) {
      for (const auto* day : {u"1", u"2", u"13"}) {
        EXPECT_EQ(DateFromParts(u"2007", automation::Decimal10(month), day), Date{});
      }
    }
  }
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(DateOfPartsInWords, DatePartsAreReadInAFormatWithTwoSeparators) {
  UsePicture(u"dd/MM YYYY");
  EXPECT_EQ(DateFromParts(u"2002", u"07", u"01"), Day(2002, 7, 1));
  EXPECT_EQ(DateFromParts(u"2002", u"13", u"05"), Day(2002, 5, 13));
}

TEST_F(DateOfParts, DatePartsWithAnEmbeddedNulGiveTheEmptyDate) {
  using namespace std::string_view_literals;
  EXPECT_EQ(DateFromParts(u"2002\0"sv, u"07", u"01"), Date{});
}

TEST_F(DateOfParts, InvalidDateFormatGivesTheEmptyDate) {
  CurrentSettings().gDateFormat = u"";
  EXPECT_EQ(DateFromParts(u"2002", u"07", u"01"), Date{});
  CurrentSettings().gDateFormat = u"bokstäver";
  EXPECT_EQ(DateFromParts(u"2002", u"07", u"01"), Date{});
}

}  // namespace
}  // namespace util
