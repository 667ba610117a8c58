// The user's regional settings. The component's conversions agree with the system's own.
#include <gmock/gmock.h>

#include "automation/conversion.h"
#include "automation/date.h"
#include "com/bstr.h"
#include "com/wide_text.h"
#include "fakes/printing.h"
#include "windows/system_clock.h"
#include "windows/user_locale.h"

namespace system_tests {
namespace {

using automation::Date;
using automation::MakeDate;

constexpr std::int32_t kShortDateItem = 31;

class Regional : public testing::Test {
 protected:
  automation::Regional regional_ = ::windows::UserLocale().Regional();
};

TEST_F(Regional, ShortDateIsTheSameFromInfoAndSettings) {
  EXPECT_EQ(::windows::UserLocale().Info(kShortDateItem), regional_.shortDate);
  EXPECT_NE(regional_.shortDate, u"");
}

TEST_F(Regional, UnknownRegionalItemHasNoAnswer) {
  EXPECT_EQ(::windows::UserLocale().Info(0x0FFF), u"");
}

TEST_F(Regional, NumbersAreWrittenAsTheSystemDoes) {
  // Up to fifteen digits and no powers of ten, where Wine differs from Windows.
  for (const double number : {0.0, 1.0, -1.0, 1.5, -2.25, 0.1, 1234567.891, 1e10, 123456789012345.0,
                              0.00012345, 1.0 / 3}) {
    ::com::Bstr text;
    ASSERT_HRESULT_SUCCEEDED(VarBstrFromR8(number, LOCALE_USER_DEFAULT, 0, text.Receive()));
    EXPECT_EQ(automation::NumberText(number, regional_), text.Text()) << number;
  }
}

TEST_F(Regional, DatesAreWrittenAsTheSystemDoes) {
  for (const Date date : {MakeDate({2026, 11, 16, 0, 0, 0}), MakeDate({2026, 11, 16, 14, 5, 0}),
                          MakeDate({2026, 1, 2, 0, 0, 59}), MakeDate({1945, 1, 1, 12, 0, 0}),
                          MakeDate({1899, 12, 30, 8, 30, 0}), MakeDate({1850, 6, 7, 23, 59, 59})}) {
    ::com::Bstr text;
    ASSERT_HRESULT_SUCCEEDED(VarBstrFromDate(date.days, LOCALE_USER_DEFAULT, 0, text.Receive()));
    EXPECT_EQ(automation::DateText(date, regional_), text.Text());
  }
}

TEST_F(Regional, WrittenDatesAreReadAsTheSystemDoes) {
  for (const Date date : {MakeDate({2026, 11, 16, 0, 0, 0}), MakeDate({2026, 3, 4, 14, 5, 0})}) {
    std::wstring text = ::com::Wide(automation::DateText(date, regional_));
    DATE read = 0;
    ASSERT_HRESULT_SUCCEEDED(VarDateFromStr(text.data(), LOCALE_USER_DEFAULT, 0, &read));
    EXPECT_EQ(automation::ParseDate(::com::FromWide(text), regional_), Date{read});
  }
}

// Includes the texts that DateFromParts builds in formats with a month's name or a weekday.
TEST_F(Regional, MonthAndDayAreSwappedAsTheSystemDoes) {
  for (std::wstring text :
       {L"13/05/2002", L"05/13/2002", L"2002-13-05", L"2002-05-13", L"2/30/2002", L"30/2/2002",
        L"13/13/2002", L"2002-02-30", L"0/12/2026", L"2-11-2007", L"5-22-2007", L"5 22 2007",
        L"1-1010-2007", L"1-77-2002", L"01-0707-2002", L"11, 1 77 2002", L"22 2007-1-2"}) {
    DATE read = 0;
    const bool isDate = SUCCEEDED(VarDateFromStr(text.data(), LOCALE_USER_DEFAULT, 0, &read));
    EXPECT_EQ(automation::ParseDate(::com::FromWide(text), regional_),
              isDate ? std::optional(Date{read}) : std::nullopt)
        << automation::ToUtf8(::com::FromWide(text));
  }
}

TEST_F(Regional, NumbersAreReadAsTheSystemDoes) {
  const std::wstring separator = ::com::Wide({&regional_.decimalSeparator, 1});
  const std::vector<std::wstring> texts = {L"12", L"-3" + separator + L"25", L" 7 ", L"1e3",
                                           L"2" + separator + L"5E-2"};
  for (std::wstring text : texts) {
    double read = 0;
    ASSERT_HRESULT_SUCCEEDED(VarR8FromStr(text.data(), LOCALE_USER_DEFAULT, 0, &read));
    EXPECT_EQ(automation::ParseNumber(::com::FromWide(text), regional_), read);
  }
}

TEST(SystemClock, SystemClockGivesLocalTime) {
  const auto system = [] {
    SYSTEMTIME now{};
    double days = 0;
    GetLocalTime(&now);
    now.wMilliseconds = 0;
    SystemTimeToVariantTime(&now, &days);
    return days;
  };
  constexpr double kHalfASecond = 0.5 / 86400;
  const double before = system();
  const double now = ::windows::SystemClock().Now().days;
  EXPECT_GE(now, before - kHalfASecond);
  EXPECT_LE(now, system() + kHalfASecond);
}

}  // namespace
}  // namespace system_tests
