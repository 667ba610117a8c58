#include "odbc/column_value.h"

#include <gtest/gtest.h>
#include <string>

#include "automation/date.h"
#include "automation/decimal.h"
#include "fakes/printing.h"
#include "odbc/api.h"

namespace odbc {
namespace {

using automation::Currency;
using automation::Date;
using automation::Decimal;
using automation::Value;

Date Moment(int year, int month, int day, int hour = 0, int minute = 0, int second = 0) {
  return automation::MakeDate({year, month, day, hour, minute, second});
}

TEST(ColumnKind, KnownTypeNameOverridesTheOdbcType) {
  EXPECT_EQ(KindOf({SQL_VARCHAR, u"bool"}, {}), ColumnKind::Boolean);
  EXPECT_EQ(KindOf({SQL_FLOAT, u"money"}, {}), ColumnKind::Currency);
  EXPECT_EQ(KindOf({SQL_DOUBLE, u"NUMERIC"}, {}), ColumnKind::Decimal);
  EXPECT_EQ(KindOf({SQL_VARCHAR, u"decimal"}, {}), ColumnKind::Decimal);
}

TEST(ColumnKind, OdbcTypeDecidesForOtherTypeNames) {
  EXPECT_EQ(KindOf({SQL_BIT, u"bit"}, {}), ColumnKind::Boolean);
  EXPECT_EQ(KindOf({SQL_SMALLINT, u"int2"}, {}), ColumnKind::Int16);
  EXPECT_EQ(KindOf({SQL_INTEGER, u"serial"}, {}), ColumnKind::Int32);
  EXPECT_EQ(KindOf({SQL_BIGINT, u"int8"}, {}), ColumnKind::BigInt);
  EXPECT_EQ(KindOf({SQL_REAL, u"float4"}, {}), ColumnKind::Single);
  EXPECT_EQ(KindOf({SQL_TYPE_TIMESTAMP, u"datetime"}, {}), ColumnKind::Date);
  EXPECT_EQ(KindOf({SQL_TYPE_DATE, u"date"}, {}), ColumnKind::Date);
  EXPECT_EQ(KindOf({SQL_WVARCHAR, u"varchar"}, {}), ColumnKind::Text);
  EXPECT_EQ(KindOf({SQL_LONGVARBINARY, u"bytea"}, {}), ColumnKind::Binary);
  EXPECT_EQ(KindOf({-9999, u"hstore"}, {}), ColumnKind::Text);
}

TEST(ColumnValue, WholeNumberHasTheColumnsWidthOrTheNextThatHoldsIt) {
  EXPECT_EQ(ToValue(u"-7", ColumnKind::Int16), Value(std::int16_t{-7}));
  EXPECT_EQ(ToValue(u"40000", ColumnKind::Int16), Value(std::int32_t{40000}));
  EXPECT_EQ(ToValue(u"7", ColumnKind::Int32), Value(std::int32_t{7}));
  EXPECT_EQ(ToValue(u"7", ColumnKind::BigInt), Value(std::int32_t{7}));
  EXPECT_EQ(ToValue(u"3000000000", ColumnKind::Int32), Value(Decimal{.lo = 3000000000U}));
  EXPECT_EQ(ToValue(u"-9223372036854775808", ColumnKind::BigInt),
            Value(Decimal{.lo = 9223372036854775808U, .negative = true}));
  EXPECT_EQ(ToValue(u"2.5", ColumnKind::Int32), Value(2.5));
}

TEST(ColumnValue, FloatColumnReadsAsDouble) {
  EXPECT_EQ(ToValue(u"0.1", ColumnKind::Double), Value(0.1));
  EXPECT_EQ(ToValue(u"1.0e+20", ColumnKind::Double), Value(1e20));
}

TEST(ColumnValue, SinglesHaveSevenDigits) {
  EXPECT_EQ(ToValue(u"1.1", ColumnKind::Single), Value(1.1));
  EXPECT_EQ(ToValue(u"1.10000002", ColumnKind::Single), Value(1.1));
  EXPECT_EQ(ToValue(u"-1.6777216e+07", ColumnKind::Single), Value(-16777220.0));
  EXPECT_EQ(ToValue(u"1e100", ColumnKind::Single), Value(1e100)) << "as SQLite may hold";
}

TEST(ColumnValue, BooleanColumnReadsAsBoolean) {
  for (const auto* yes : {u"1", u"-1", u"t", u"true", u"TRUE"}) {
    EXPECT_EQ(ToValue(yes, ColumnKind::Boolean), Value(true));
  }
  for (const auto* no : {u"0", u"f", u"False"}) {
    EXPECT_EQ(ToValue(no, ColumnKind::Boolean), Value(false));
  }
}

TEST(ColumnValue, UnconvertibleContentStaysText) {
  for (const auto kind :
       {ColumnKind::Boolean, ColumnKind::Int16, ColumnKind::Int32, ColumnKind::BigInt,
        ColumnKind::Single, ColumnKind::Double, ColumnKind::Decimal, ColumnKind::Currency,
        ColumnKind::Date, ColumnKind::Time}) {
    for (const std::u16string text : {u"", u"soon", u"1 2 x"}) {
      EXPECT_EQ(ToValue(text, kind), Value(text));
    }
  }
  EXPECT_EQ(ToValue(u"12", ColumnKind::Text), Value(u"12"));
}

TEST(ColumnDecimal, DecimalKeepsItsDigits) {
  EXPECT_EQ(ParseDecimal(u"12.50"), (Decimal{.lo = 1250, .scale = 2}));
  EXPECT_EQ(ParseDecimal(u"-0.05"), (Decimal{.lo = 5, .scale = 2, .negative = true}));
  EXPECT_EQ(ParseDecimal(u".5"), (Decimal{.lo = 5, .scale = 1}));
  EXPECT_EQ(ParseDecimal(u"79228162514264337593543950335"),
            (Decimal{.lo = 0xFFFFFFFFFFFFFFFF, .hi = 0xFFFFFFFF}));
}

TEST(ColumnDecimal, ExponentsAreRead) {
  EXPECT_EQ(ParseDecimal(u"1.25e2"), (Decimal{.lo = 125}));
  EXPECT_EQ(ParseDecimal(u"1E+3"), (Decimal{.lo = 1000}));
  EXPECT_EQ(ParseDecimal(u"1e-07"), (Decimal{.lo = 1, .scale = 7}));
}

TEST(ColumnDecimal, ExcessDecimalPlacesAreRounded) {
  const auto rounded = [](std::u16string_view text) {
    return automation::DecimalText(ParseDecimal(text).value(), u'.');
  };
  EXPECT_EQ(rounded(u"0.33333333333333333333333333335"), u"0.3333333333333333333333333334");
  EXPECT_EQ(rounded(u"-2.99999999999999999999999999999"), u"-3.0000000000000000000000000000");
  EXPECT_EQ(rounded(u"79228162514264337593543950334.5"), u"79228162514264337593543950335");
  EXPECT_EQ(rounded(u"12345678901234567890.123456789012"), u"12345678901234567890.123456789");
  EXPECT_EQ(ParseDecimal(u"1e-300"), Decimal{});
}

TEST(ColumnDecimal, InvalidOrTooLargeDecimalIsNotRead) {
  for (const auto* text : {u"", u".", u"-", u"e5", u"1e", u"1,5", u"0x10", u"NaN", u"1.2.3",
                           u"79228162514264337593543950336", u"1e300", u"1e99999"}) {
    EXPECT_EQ(ParseDecimal(text), std::nullopt);
  }
}

TEST(ColumnCurrency, PlainNumbersAreReadToFourDecimals) {
  EXPECT_EQ(ParseCurrency(u"99.5"), Currency{995000});
  EXPECT_EQ(ParseCurrency(u"-1234.5678"), Currency{-12345678});
  EXPECT_EQ(ParseCurrency(u"0.00005"), Currency{1});
  EXPECT_EQ(ParseCurrency(u"77"), Currency{770000});
}

TEST(ColumnCurrency, AmountOutOfRangeIsNotRead) {
  EXPECT_EQ(ParseCurrency(u"922337203685477.5807"), Currency{9223372036854775807});
  EXPECT_EQ(ParseCurrency(u"922337203685477.5808"), std::nullopt);
  EXPECT_EQ(ParseCurrency(u"free"), std::nullopt);
}

TEST(ColumnDate, IsoDatesAreRead) {
  EXPECT_EQ(ParseTimestamp(u"2026-11-16"), Moment(2026, 11, 16));
  EXPECT_EQ(ParseTimestamp(u"2026-11-16 14:05"), Moment(2026, 11, 16, 14, 5));
  EXPECT_EQ(ParseTimestamp(u"2026-11-16T14:05:09"), Moment(2026, 11, 16, 14, 5, 9));
  EXPECT_EQ(ParseTimestamp(u"2026-11-16 14:05:09.999999+01"), Moment(2026, 11, 16, 14, 5, 9));
}

TEST(ColumnDate, HostsMonthFirstDatesAreRead) {
  EXPECT_EQ(ParseTimestamp(u"11-16-2026"), Moment(2026, 11, 16));
  EXPECT_EQ(ParseTimestamp(u"02-03-2026 14:05:00"), Moment(2026, 2, 3, 14, 5));
}

TEST(ColumnDate, InvalidDateIsNotRead) {
  for (const auto* text :
       {u"", u"2026-13-01", u"2026-02-29", u"2026-11-16x", u"2026-11-16 25:00", u"2026-11-16 14",
        u"2026-11-16 14:05:x", u"0000-00-00 00:00:00", u"20261116", u"2461361.5"}) {
    EXPECT_EQ(ParseTimestamp(text), std::nullopt);
  }
}

TEST(ColumnDate, TimeWithoutADateIsAFractionOfDayZero) {
  EXPECT_EQ(ToValue(u"18:00:00", ColumnKind::Time), Value(Date{0.75}));
}

}  // namespace
}  // namespace odbc
