// Which conversions use the user's settings. tests/unit/automation tests their results.
#include "platform/conversions.h"

#include <gtest/gtest.h>

#include "automation/date.h"
#include "fakes/ports_fixture.h"
#include "fakes/with.h"

namespace platform {
namespace {

using automation::Value;

class CountedLocale : public fakes::Locale {
 public:
  automation::Regional Regional() override {
    ++asked;
    return fakes::Locale::Regional();
  }
  int asked = 0;
};

class Conversions : public fakes::PortsFixture {
 protected:
  Conversions() {
    counted_.UseSwedish();
    Use(ports_);
  }
  // How often `convert` queries the settings.
  template <class Convert>
  int Asked(Convert convert) {
    counted_.asked = 0;
    convert();
    return counted_.asked;
  }

  CountedLocale counted_;
  Platform ports_ = fakes::With(ports, counted_);
};

const automation::Date kDay = automation::MakeDate({2026, 11, 16, 0, 0, 0});

TEST_F(Conversions, FractionsAndDatesAreWrittenByTheUsersSettings) {
  EXPECT_EQ(ToText(12.5), u"12,5");
  EXPECT_EQ(ToText(automation::Currency{125'000}), u"12,5");
  EXPECT_EQ(ToText(automation::Decimal{.lo = 125, .scale = 1}), u"12,5");
  EXPECT_EQ(ToText(kDay), u"2026-11-16");
  EXPECT_EQ(DateText(kDay), u"2026-11-16");
}

TEST_F(Conversions, TextsAreReadByTheUsersSettings) {
  EXPECT_EQ(ToInt16(u"1,6"), 2);
  EXPECT_EQ(ToInt32(u"1,6"), 2);
  EXPECT_EQ(ToDouble(u"1,6"), 1.6);
  EXPECT_FALSE(ToBool(u"0,0"));
  EXPECT_EQ(ToDate(u"2026-11-16"), kDay);
}

TEST_F(Conversions, UnneededUserSettingsAreNotQueried) {
  for (const Value& value :
       {Value(), Value(true), Value(std::int16_t{1}), Value(4711), Value(u"a")}) {
    EXPECT_EQ(Asked([&] { ToText(value); }), 0);
  }
  for (const Value& value : {Value(), Value(true), Value(1), Value(1.5),
                             Value(automation::Currency{10'000}), Value(automation::Date{1})}) {
    EXPECT_EQ(Asked([&] {
                ToInt16(value);
                ToInt32(value);
                ToDouble(value);
                ToBool(value);
                ToDate(value);
              }),
              0);
  }
  EXPECT_EQ(Asked([] { ToText(12.5); }), 1);
}

}  // namespace
}  // namespace platform
