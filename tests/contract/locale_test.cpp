// Dates in the user's own settings, whatever they are: run under Swedish and US settings.
#include "platform/locale.h"

#include <gtest/gtest.h>

#include "automation/date.h"
#include "automation/text.h"
#include "contract/registry_adapter.h"
#include "fakes/printing.h"
#include "platform/conversions.h"
#include "util/date_format.h"
#include "util/session_settings.h"
#include "util/sql_date.h"
#include "util/subsidy_period.h"

namespace contract {
namespace {

using automation::Decimal10;

class UsersLocale : public testing::Test {
 protected:
  UsersLocale() {
    platform::Use(RegistryPlatform());
    util::CurrentSettings().gDateFormat = util::GetLanguageDateFormat();
  }
  static automation::Date Day(int year, int month, int day) {
    return automation::MakeDate({year, month, day, 0, 0, 0});
  }
};

TEST_F(UsersLocale, ShortDateHasAFourDigitYear) {
  constexpr std::int32_t shortDate = 31;
  EXPECT_NE(RegistryPlatform().locale.Info(shortDate), u"");
  EXPECT_NE(automation::UCase(util::GetLanguageDateFormat()).find(u"YYYY"), std::u16string::npos);
}

TEST_F(UsersLocale, EveryDateIsWrittenAndReadInTheLocalesOrder) {
  for (const int year : {1912, 1942, 2002, 2029, 2030, 2026}) {
    for (int month = 1; month <= 12; ++month) {
      for (const int day : {1, 7, 12, 13, 28}) {
        EXPECT_EQ(util::DateFromParts(Decimal10(year), Decimal10(month), Decimal10(day)),
                  Day(year, month, day));
        const auto date = Day(year, month, day);
        EXPECT_EQ(platform::ToDate(platform::DateText(date)), date);
      }
    }
  }
  EXPECT_EQ(util::DateFromParts(u"2002", u"02", u"30"), automation::Date{});
}

TEST_F(UsersLocale, LocaleDoesNotChangeTheSubsidysDates) {
  EXPECT_TRUE(util::IsInSubsidyPeriod(11, Day(2002, 6, 30), u""));
  EXPECT_FALSE(util::IsInSubsidyPeriod(11, Day(2002, 7, 1), u""));
  EXPECT_TRUE(util::IsInSubsidyPeriod(61, Day(2002, 3, 31), util::kElderlyDebit));
  EXPECT_FALSE(util::IsInSubsidyPeriod(61, Day(2002, 4, 1), util::kElderlyDebit));
}

TEST_F(UsersLocale, LocaleAffectsOnlyThePlainSqlDate) {
  util::CurrentSettings().gDbType = 1;
  std::u16string time = u"14:05:00";
  EXPECT_EQ(util::GetSqlDate(Day(2026, 11, 16), false, time), u"#11-16-2026 14:05:00#");
  std::u16string none;
  EXPECT_EQ(util::GetSqlDate(Day(2026, 11, 16), true, none),
            u"'" + platform::DateText(Day(2026, 11, 16)) + u"'");
}

}  // namespace
}  // namespace contract
