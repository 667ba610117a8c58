#include "automation/conversion.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "automation/automation_error.h"
#include "automation/date.h"
#include "automation/decimal.h"
#include "fakes/printing.h"

namespace automation {
namespace {

using fakes::ErrorNumberOf;

const Regional kUs;
const Regional kSwedish{.shortDate = u"yyyy-MM-dd",
                        .decimalSeparator = u',',
                        .groupSeparator = u'\u00A0',
                        .twelveHourClock = false};

TEST(WholeNumbers, RoundHalfToEven) {
  EXPECT_EQ(ToInt32(2.5, kUs), 2);
  EXPECT_EQ(ToInt32(3.5, kUs), 4);
  EXPECT_EQ(ToInt32(-2.5, kUs), -2);
  EXPECT_EQ(ToInt32(-3.5, kUs), -4);
  EXPECT_EQ(ToInt32(2.4999, kUs), 2);
  EXPECT_EQ(ToInt16(u"0.5", kUs), 0);
}

TEST(WholeNumbers, OutsideTheTypeRaiseOverflow) {
  EXPECT_EQ(ToInt32(2147483647.0, kUs), 2147483647);
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(2147483648.0, kUs); }), 6);
  EXPECT_EQ(ToInt32(-2147483648.0, kUs), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(-2147483649.0, kUs); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { ToInt16(std::int32_t{32768}, kUs); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(std::nan(""), kUs); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(u"1e999", kUs); }), 6);
}

TEST(Null, RaisesInvalidUseOfNullInEveryConversion) {
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToInt16(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToDouble(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToBool(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToText(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToDate(Null(), kUs); }), 94);
}

TEST(EmptyValue, ReadsAsZeroFalseAndNoText) {
  EXPECT_EQ(ToInt32(Value(), kUs), 0);
  EXPECT_FALSE(ToBool(Value(), kUs));
  EXPECT_EQ(ToText(Value(), kUs), u"");
  EXPECT_EQ(ToDate(Value(), kUs), Date{0});
}

TEST(NumberTexts, AreReadInTheUsersLocale) {
  EXPECT_EQ(ToDouble(u" 4711 ", kUs), 4711);
  EXPECT_EQ(ToDouble(u"-1,234.5", kUs), -1234.5);
  EXPECT_EQ(ToDouble(u"12,5", kSwedish), 12.5);
  EXPECT_EQ(ToDouble(u"1 234,5", kSwedish), 1234.5);
  EXPECT_EQ(ToDouble(u"1\u00A0234,5", kSwedish), 1234.5);
  EXPECT_EQ(ToDouble(u"1e3", kUs), 1000);
  EXPECT_EQ(ToDouble(u".5", kUs), 0.5);
  EXPECT_EQ(ToDouble(u"5.", kUs), 5);
  EXPECT_EQ(ToDouble(u"1e-999", kUs), 0);
}

TEST(NumberTexts, ThatAreNoNumbersRaiseTypeMismatch) {
  for (const auto* text : {u"", u" ", u"x", u"12x", u"--1", u"1e", u"1.2.3", u".", u"1 2 -"}) {
    EXPECT_EQ(ErrorNumberOf([&] { ToInt32(text, kUs); }), 13) << ToUtf8(text);
  }
  EXPECT_EQ(ErrorNumberOf([] { ToDouble(u"12.5", kSwedish); }), 13);
}

TEST(Booleans, AreReadFromNumbersAndTheirOwnTexts) {
  EXPECT_TRUE(ToBool(-1.0, kUs));
  EXPECT_TRUE(ToBool(std::int32_t{2}, kUs));
  EXPECT_FALSE(ToBool(0.0, kUs));
  EXPECT_TRUE(ToBool(u"true", kUs));
  EXPECT_FALSE(ToBool(u"False", kUs));
  EXPECT_TRUE(ToBool(u"7", kUs));
  EXPECT_EQ(ErrorNumberOf([] { ToBool(u"ja", kUs); }), 13);
  EXPECT_EQ(ErrorNumberOf([] { ToBool(u"1e400", kUs); }), 6);
  EXPECT_EQ(ToInt32(true, kUs), -1);
  EXPECT_EQ(ToText(true, kUs), u"True");
  EXPECT_EQ(ToText(false, kUs), u"False");
}

TEST(NumbersAsText, HaveNoGroupingAndAtMostFifteenDigits) {
  EXPECT_EQ(ToText(1234567.5, kUs), u"1234567.5");
  EXPECT_EQ(ToText(1234567.5, kSwedish), u"1234567,5");
  EXPECT_EQ(ToText(1.0 / 3, kUs), u"0.333333333333333");
  EXPECT_EQ(ToText(100000000000000.0, kUs), u"100000000000000");
  EXPECT_EQ(ToText(1e15, kUs), u"1E+15");
  EXPECT_EQ(ToText(-0.00001, kUs), u"-0.00001");
  EXPECT_EQ(ToText(1.5e-20, kUs), u"1.5E-20");
  EXPECT_EQ(ToText(0.1 + 0.2, kUs), u"0.3");
  EXPECT_EQ(ToText(-0.0, kUs), u"0");
  EXPECT_EQ(ToText(std::int32_t{-42}, kUs), u"-42");
}

TEST(AmountsAsText, DropTheZerosThatEndTheirPlaces) {
  EXPECT_EQ(ToText(Currency{12500}, kSwedish), u"1,25");
  EXPECT_EQ(ToText(Currency{-100000}, kUs), u"-10");
  EXPECT_EQ(ToText(Currency{0}, kUs), u"0");
  EXPECT_EQ(ToText(*ParseDecimal(u"12.50"), kSwedish), u"12,5");
  EXPECT_EQ(ToText(*ParseDecimal(u"100"), kUs), u"100");
  EXPECT_EQ(ToText(*ParseDecimal(u"-0.05"), kUs), u"-0.05");
}

TEST(Decimals, HoldNinetySixBits) {
  const auto largest = ParseDecimal(u"79228162514264337593543950335");
  ASSERT_TRUE(largest);
  EXPECT_EQ(largest->hi, 0xFFFFFFFFU);
  EXPECT_EQ(DecimalText(*largest, u'.'), u"79228162514264337593543950335");
  EXPECT_NEAR(DoubleOf(*largest), 7.9228162514264338e28, 1e14);
  EXPECT_FALSE(ParseDecimal(u"79228162514264337593543950336"));
  EXPECT_FALSE(ParseDecimal(u"1e5"));
  EXPECT_FALSE(ParseDecimal(u"-"));
  EXPECT_FALSE(ParseDecimal(u""));
  EXPECT_EQ(DecimalText(DecimalOf(std::numeric_limits<std::int64_t>::min()), u'.'),
            u"-9223372036854775808");
}

TEST(FixedFormat, HasTwoPlacesAndNoGrouping) {
  EXPECT_EQ(FixedText(0, kUs), u"0.00");
  EXPECT_EQ(FixedText(-7700, kUs), u"-7700.00");
  EXPECT_EQ(FixedText(1234567.891, kSwedish), u"1234567,89");
  EXPECT_EQ(FixedText(0.145, kUs), u"0.15");
  EXPECT_EQ(FixedText(2.675, kUs), u"2.68");
  EXPECT_EQ(FixedText(0.005, kUs), u"0.01");
  EXPECT_EQ(FixedText(0.0049, kUs), u"0.00");
  EXPECT_EQ(FixedText(-0.001, kUs), u"0.00");
  EXPECT_EQ(FixedText(9.999, kUs), u"10.00");
  EXPECT_EQ(FixedText(0.5, kUs), u"0.50");
  EXPECT_EQ(FixedText(1e20, kUs), u"100000000000000000000.00");
}

TEST(NumbersAsText, BeyondTheRangeOfADoubleRaiseOverflow) {
  using Limits = std::numeric_limits<double>;
  for (const double number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
    EXPECT_EQ(ErrorNumberOf([&] { FixedText(number, kUs); }), 6);
    EXPECT_EQ(ErrorNumberOf([&] { NumberText(number, kUs); }), 6);
    EXPECT_EQ(ErrorNumberOf([&] { ToText(number, kUs); }), 6);
  }
  EXPECT_EQ(FixedText(Limits::max(), kUs).size(), 312U);
}

TEST(ErrorNumbers, OfComCallsFollowTheRuntime) {
  const auto number = [](std::uint32_t code) {
    return ErrorNumberFromHresult(static_cast<std::int32_t>(code));
  };
  EXPECT_EQ(number(0x800A0E78), 3704);
  EXPECT_EQ(number(0x80020005), 13);
  EXPECT_EQ(number(0x8002000A), 6);
  EXPECT_EQ(number(0x8007000E), 7);
  EXPECT_EQ(number(0x80070057), 5);
  EXPECT_EQ(number(0x80040154), 429);
  EXPECT_EQ(number(0x80040E14), -2147217900);
}

TEST(ErrorTexts, ComeFromTheObjectElseFromTheRuntime) {
  EXPECT_EQ(ErrorFromHresult(-2147217900, u"", u"near \"x\"").description(), u"near \"x\"");
  EXPECT_EQ(ErrorFromHresult(-2147217900, u"", u"").description(), u"Automation error");
  EXPECT_EQ(AutomationError(RuntimeError::ObjectNotSet).description(),
            u"Object variable or With block variable not set");
  EXPECT_EQ(RuntimeErrorText(4242), u"Application-defined or object-defined error");
}

}  // namespace
}  // namespace automation
