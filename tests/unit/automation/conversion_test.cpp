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

std::u16string FixedText(double number, const Regional& regional) {
  std::u16string text;
  AppendFixed(text, number, regional);
  return text;
}

TEST(WholeNumbers, WholeNumbersRoundHalfToEven) {
  EXPECT_EQ(ToInt32(2.5, kUs), 2);
  EXPECT_EQ(ToInt32(3.5, kUs), 4);
  EXPECT_EQ(ToInt32(-2.5, kUs), -2);
  EXPECT_EQ(ToInt32(-3.5, kUs), -4);
  EXPECT_EQ(ToInt32(2.4999, kUs), 2);
  EXPECT_EQ(ToInt16(u"0.5", kUs), 0);
}

TEST(WholeNumbers, WholeNumberOutsideItsTypeRaisesOverflow) {
  EXPECT_EQ(ToInt32(2147483647.0, kUs), 2147483647);
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(2147483648.0, kUs); }), 6);
  EXPECT_EQ(ToInt32(-2147483648.0, kUs), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(-2147483649.0, kUs); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { ToInt16(std::int32_t{32768}, kUs); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(std::nan(""), kUs); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(u"1e999", kUs); }), 6);
}

TEST(Null, NullRaisesInvalidUseOfNullInEveryConversion) {
  EXPECT_EQ(ErrorNumberOf([] { ToInt32(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToInt16(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToDouble(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToBool(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToText(Null(), kUs); }), 94);
  EXPECT_EQ(ErrorNumberOf([] { ToDate(Null(), kUs); }), 94);
}

TEST(EmptyValue, EmptyValueReadsAsZeroFalseAndEmptyText) {
  EXPECT_EQ(ToInt32(Value(), kUs), 0);
  EXPECT_FALSE(ToBool(Value(), kUs));
  EXPECT_EQ(ToText(Value(), kUs), u"");
  EXPECT_EQ(ToDate(Value(), kUs), Date{0});
}

TEST(NumberTexts, NumberTextsAreReadInTheUsersLocale) {
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

TEST(NumberTexts, NonNumericTextRaisesTypeMismatch) {
  for (const auto* text : {u"", u" ", u"x", u"12x", u"--1", u"1e", u"1.2.3", u".", u"1 2 -"}) {
    EXPECT_EQ(ErrorNumberOf([&] { ToInt32(text, kUs); }), 13) << ToUtf8(text);
  }
  EXPECT_EQ(ErrorNumberOf([] { ToDouble(u"12.5", kSwedish); }), 13);
}

TEST(Booleans, BooleanIsReadFromNumbersAndItsOwnTexts) {
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

TEST(NumbersAsText, NumberAsTextHasNoGroupingAndAtMostFifteenDigits) {
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

TEST(AmountsAsText, AmountAsTextDropsTrailingZeros) {
  EXPECT_EQ(ToText(Currency{12500}, kSwedish), u"1,25");
  EXPECT_EQ(ToText(Currency{-100000}, kUs), u"-10");
  EXPECT_EQ(ToText(Currency{0}, kUs), u"0");
  EXPECT_EQ(ToText(*ParseDecimal(u"12.50"), kSwedish), u"12,5");
  EXPECT_EQ(ToText(*ParseDecimal(u"100"), kUs), u"100");
  EXPECT_EQ(ToText(*ParseDecimal(u"-0.05"), kUs), u"-0.05");
  EXPECT_EQ(ToText(*ParseDecimal(u"12.0"), kUs), u"12");
}

TEST(Singles, SinglesAreWidenedByTheirSevenDigits) {
  EXPECT_EQ(WidenSingle(1.1F), 1.1);
  EXPECT_EQ(ToText(Value(WidenSingle(1.1F)), kSwedish), u"1,1");
  EXPECT_EQ(WidenSingle(-0.1F), -0.1);
  EXPECT_EQ(WidenSingle(1234567.0F), 1234567.0);
  EXPECT_EQ(WidenSingle(16777216.0F), 16777220.0);
  EXPECT_EQ(WidenSingle(3.402823466e38F), 3.402823e38);
  EXPECT_EQ(WidenSingle(1e-45F), 1.401298e-45);
  EXPECT_EQ(WidenSingle(0.0F), 0.0);
  EXPECT_EQ(WidenSingle(std::numeric_limits<float>::infinity()),
            std::numeric_limits<double>::infinity());
}

TEST(Decimals, DecimalsHoldNinetySixBits) {
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

TEST(FixedFormat, FixedFormatHasTwoPlacesAndNoGrouping) {
  EXPECT_EQ(FixedText(0, kUs), u"0.00");
  EXPECT_EQ(FixedText(1, kUs), u"1.00");
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

TEST(NumbersAsText, NumberBeyondADoubleRaisesOverflowAsText) {
  using Limits = std::numeric_limits<double>;
  for (const double number : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN()}) {
    EXPECT_EQ(ErrorNumberOf([&] { FixedText(number, kUs); }), 6);
    EXPECT_EQ(ErrorNumberOf([&] { NumberText(number, kUs); }), 6);
    EXPECT_EQ(ErrorNumberOf([&] { ToText(number, kUs); }), 6);
  }
  EXPECT_EQ(FixedText(Limits::max(), kUs).size(), 312U);
}

TEST(NumbersAsText, NumberAsTextIsWrittenOutUpToFifteenDigits) {
  EXPECT_EQ(ToText(999999999999999.0, kUs), u"999999999999999");
  EXPECT_EQ(ToText(1.5e15, kUs), u"1.5E+15");
  EXPECT_EQ(ToText(1e-15, kUs), u"0.000000000000001");
  EXPECT_EQ(ToText(1.5e-15, kSwedish), u"1,5E-15");
  EXPECT_EQ(ToText(1e-16, kUs), u"1E-16");
  EXPECT_EQ(ToText(1e-5, kUs), u"0.00001");
  EXPECT_EQ(ToText(-1e100, kUs), u"-1E+100");
  EXPECT_EQ(ToText(1.25e-100, kUs), u"1.25E-100");
  EXPECT_EQ(ToText(12.0, kUs), u"12");
  EXPECT_EQ(ToText(0.5, kSwedish), u"0,5");
}

TEST(NumberTexts, NumberTextMayHaveBlanksAroundIt) {
  for (const auto* text : {u"\t1", u"1\t", u"\n1\v", u"\f1\r", u"  1  "}) {
    EXPECT_EQ(ToDouble(text, kUs), 1) << ToUtf8(text);
  }
  for (const auto* text : {u"\b1", u"1\b", u"\u000E1", u"1\u000E"}) {
    EXPECT_EQ(ErrorNumberOf([&] { ToDouble(text, kUs); }), 13) << ToUtf8(text);
  }
}

TEST(NumberTexts, NumberTextMayHaveOneSignAndOneOfTheExponent) {
  EXPECT_EQ(ToDouble(u"+5", kUs), 5);
  EXPECT_EQ(ToDouble(u"1e+2", kUs), 100);
  EXPECT_EQ(ToDouble(u"-1E-2", kUs), -0.01);
  for (const auto* text :
       {u"+-5", u"-+5", u"1e--2", u"1e+", u"5-", u"e5", u".e5", u"-", u"1e2.5"}) {
    EXPECT_EQ(ErrorNumberOf([&] { ToDouble(text, kUs); }), 13) << ToUtf8(text);
  }
}

TEST(NumberTexts, NumberTextHasGroupsBetweenFirstDigitAndDecimals) {
  EXPECT_EQ(ToDouble(u"1,234,567", kUs), 1234567);
  EXPECT_EQ(ToDouble(u"1,2", kUs), 12);
  EXPECT_EQ(ToDouble(u"1 234 ", kSwedish), 1234);
  for (const auto* text : {u",5", u"-,5", u"1.2,3", u"1e1,0", u"1 234", u"1\u00A0234"}) {
    EXPECT_EQ(ErrorNumberOf([&] { ToDouble(text, kUs); }), 13) << ToUtf8(text);
  }
  EXPECT_EQ(ErrorNumberOf([] { ToDouble(u"1.234", kSwedish); }), 13);
}

TEST(NumberTexts, NumberTextHasOnlyTheDigitsZeroToNine) {
  EXPECT_EQ(ToDouble(u"1234567890", kUs), 1234567890);
  for (const auto* text : {u"1/", u"1:", u"/1", u":1", u"1\u0661"}) {
    EXPECT_EQ(ErrorNumberOf([&] { ToDouble(text, kUs); }), 13) << ToUtf8(text);
  }
}

TEST(NumberTexts, NumberTextTooSmallForADoubleIsZeroAndTooLargeOverflows) {
  EXPECT_EQ(ToDouble(u"-1e-400", kUs), 0);
  EXPECT_EQ(ErrorNumberOf([] { ToDouble(u"1e400", kUs); }), 6);
  EXPECT_EQ(ErrorNumberOf([] { ToDouble(u"-1e400", kUs); }), 6);
  EXPECT_TRUE(std::isinf(*ParseNumber(u"1e400", kUs)));
  EXPECT_EQ(ToDouble(u"1e308", kUs), 1e308);
}

TEST(FixedFormat, FixedFormatRoundsOnTheThirdDecimal) {
  EXPECT_EQ(FixedText(-0.005, kUs), u"-0.01");
  EXPECT_EQ(FixedText(0.0005, kUs), u"0.00");
  EXPECT_EQ(FixedText(0.001, kUs), u"0.00");
  EXPECT_EQ(FixedText(0.009, kUs), u"0.01");
  EXPECT_EQ(FixedText(0.0009, kUs), u"0.00");
  EXPECT_EQ(FixedText(0.00001, kSwedish), u"0,00");
  EXPECT_EQ(FixedText(0.0999, kUs), u"0.10");
  EXPECT_EQ(FixedText(99.995, kUs), u"100.00");
  EXPECT_EQ(FixedText(99.994, kUs), u"99.99");
  EXPECT_EQ(FixedText(19.996, kUs), u"20.00");
  EXPECT_EQ(FixedText(1234.5, kUs), u"1234.50");
  EXPECT_EQ(FixedText(0.01, kUs), u"0.01");
  EXPECT_EQ(FixedText(-0.01, kUs), u"-0.01");
  EXPECT_EQ(FixedText(10, kUs), u"10.00");
}

TEST(Decimals, DecimalsAreReadWithSignAndPlaces) {
  const auto read = [](std::u16string_view text) { return ParseDecimal(text).value(); };
  EXPECT_EQ(read(u"-12.50"), (Decimal{.lo = 1250, .hi = 0, .scale = 2, .negative = true}));
  EXPECT_EQ(read(u"+12.5"), (Decimal{.lo = 125, .hi = 0, .scale = 1, .negative = false}));
  EXPECT_EQ(read(u"12."), (Decimal{.lo = 12, .hi = 0, .scale = 0, .negative = false}));
  EXPECT_EQ(read(u".5"), (Decimal{.lo = 5, .hi = 0, .scale = 1, .negative = false}));
  EXPECT_EQ(read(u"4294967296"), (Decimal{.lo = 1ULL << 32, .hi = 0, .scale = 0}));
  EXPECT_EQ(read(u"18446744073709551616"), (Decimal{.lo = 0, .hi = 1, .scale = 0}));
  EXPECT_EQ(read(u"0.0000000000000000000000000001"), (Decimal{.lo = 1, .hi = 0, .scale = 28}));
  EXPECT_FALSE(ParseDecimal(u"0.00000000000000000000000000001"));
  for (const auto* text : {u".", u"+", u"+-1", u"1.2.3", u"1/", u"1:", u"1 "}) {
    EXPECT_FALSE(ParseDecimal(text)) << ToUtf8(text);
  }
}

TEST(Decimals, DecimalsAreWrittenWithAllTheirPlaces) {
  EXPECT_EQ(DecimalText({.lo = 1250, .hi = 0, .scale = 2, .negative = true}, u','), u"-12,50");
  EXPECT_EQ(DecimalText({.lo = 5, .hi = 0, .scale = 3, .negative = false}, u'.'), u"0.005");
  EXPECT_EQ(DecimalText({.lo = 0, .hi = 1, .scale = 1, .negative = false}, u'.'),
            u"1844674407370955161.6");
  EXPECT_EQ(DecimalText({.lo = 1ULL << 32, .hi = 0, .scale = 0}, u'.'), u"4294967296");
  EXPECT_EQ(DecimalText({}, u'.'), u"0");
  EXPECT_EQ(DecimalText({.lo = 0, .hi = 0, .scale = 2, .negative = false}, u'.'), u"0.00");
}

TEST(Decimals, DecimalReadsAsTheNearestDouble) {
  EXPECT_EQ(DoubleOf({.lo = 1250, .hi = 0, .scale = 2, .negative = true}), -12.5);
  EXPECT_EQ(DoubleOf({.lo = 3, .hi = 1, .scale = 0, .negative = false}), 18446744073709551619.0);
  EXPECT_EQ(DoubleOf({.lo = 0, .hi = 2, .scale = 1, .negative = false}), 3689348814741910323.2);
  EXPECT_EQ(DoubleOf(DecimalOf(-12)), -12);
  EXPECT_EQ(DecimalOf(12), (Decimal{.lo = 12, .hi = 0, .scale = 0, .negative = false}));
  EXPECT_EQ(DecimalOf(0), (Decimal{.lo = 0, .hi = 0, .scale = 0, .negative = false}));
}

// Whether no other double is nearer to numerator / denominator; they are below 2^17 and 2^10.
bool IsNearest(double number, std::uint64_t numerator, std::uint64_t denominator) {
  int exponent = 0;
  const double fraction = std::frexp(number, &exponent);
  const auto mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, 53));
  const std::uint64_t exact = numerator << (53 - exponent);
  const std::uint64_t found = mantissa * denominator;
  return (exact > found ? exact - found : found - exact) <= denominator / 2;
}

TEST(NumberTexts, NumberTextReadsAsTheNearestDouble) {
  for (std::uint32_t thousandths = 1; thousandths < 100000; ++thousandths) {
    const std::u16string text = Decimal10(thousandths) + u"e-3";
    ASSERT_TRUE(IsNearest(ToDouble(text, kUs), thousandths, 1000)) << thousandths;
  }
}

TEST(CurrencyAmounts, CurrencyAmountReadsAsTheNearestDouble) {
  for (std::int32_t tenThousandths = 1; tenThousandths < 100000; ++tenThousandths) {
    // Sixteen times the amount, which keeps the denominator small.
    const double number = ToDouble(Currency{tenThousandths}, kUs) * 16;
    ASSERT_TRUE(IsNearest(number, static_cast<std::uint64_t>(tenThousandths), 625))
        << tenThousandths;
  }
}

TEST(WholeNumbers, DecimalRoundsToTheWholeNumberOfItsDouble) {
  EXPECT_EQ(ToInt32(*ParseDecimal(u"3.49999999999999999999"), kUs), 4);
  EXPECT_EQ(ToInt32(*ParseDecimal(u"2.50000000000000000001"), kUs), 2);
}

TEST(EveryKindOfValue, EveryKindOfValueReadsAsANumber) {
  EXPECT_EQ(ToDouble(true, kUs), -1);
  EXPECT_EQ(ToDouble(false, kUs), 0);
  EXPECT_EQ(ToDouble(std::int16_t{-7}, kUs), -7);
  EXPECT_EQ(ToDouble(Currency{-12345}, kUs), -1.2345);
  EXPECT_EQ(ToDouble(*ParseDecimal(u"-12.5"), kUs), -12.5);
  EXPECT_EQ(ToDouble(Date{2.25}, kUs), 2.25);
  EXPECT_EQ(ToInt16(-32768.0, kUs), -32768);
  EXPECT_EQ(ToInt16(32767.0, kUs), 32767);
  EXPECT_EQ(ErrorNumberOf([] { ToInt16(-32769.0, kUs); }), 6);
}

TEST(EveryKindOfValue, NumbersDatesAndDateTextsReadAsDates) {
  EXPECT_EQ(ToDate(2.25, kUs), Date{2.25});
  EXPECT_EQ(ToDate(Date{46342}, kUs), Date{46342});
  EXPECT_EQ(ToDate(u"1/1/1900", kUs), Date{2});
  EXPECT_EQ(ErrorNumberOf([] { ToDate(u"2.25", kUs); }), 13);
}

}  // namespace
}  // namespace automation
