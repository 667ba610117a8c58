// How each row reads its driver's types and texts.
#include "odbc/dialect.h"

#include <gtest/gtest.h>
#include <string>

#include "automation/date.h"
#include "fakes/printing.h"
#include "odbc/api.h"

namespace odbc {
namespace {

using automation::Currency;
using automation::Decimal;
using automation::Null;
using automation::Value;

// The usual reading when the row has none of its own.
Value Read(std::u16string_view product, std::u16string text, ColumnKind kind) {
  const auto own = DialectOf(product).ownReading(text, kind);
  return own ? *own : ToValue(std::move(text), kind);
}

TEST(PostgresqlRow, AmountsAreReadInTheServersLocale) {
  const auto amount = [](const char16_t* text) {
    return Read(u"PostgreSQL", text, ColumnKind::Currency);
  };
  EXPECT_EQ(amount(u"$1,234.50"), Value(Currency{12345000}));
  EXPECT_EQ(amount(u"-$0.05"), Value(Currency{-500}));
  EXPECT_EQ(amount(u"($1.50)"), Value(Currency{-15000}));
  EXPECT_EQ(amount(u"1.234,50 kr"), Value(Currency{12345000}));
  EXPECT_EQ(amount(u"12\u00A0345,00 kr"), Value(Currency{123450000}));
  EXPECT_EQ(amount(u"¥1,234"), Value(Currency{12340000}));
  EXPECT_EQ(amount(u"1234.5678"), Value(Currency{12345678}));
  EXPECT_EQ(amount(u"free"), Value(u"free"));
}

TEST(PostgresqlRow, OtherTextsAreReadAsUsual) {
  EXPECT_EQ(Read(u"PostgreSQL", u"$1", ColumnKind::Text), Value(u"$1"));
  EXPECT_EQ(Read(u"PostgreSQL", u"t", ColumnKind::Boolean), Value(true));
}

TEST(MariadbRow, TinyintOf0Or1IsABoolean) {
  EXPECT_EQ(KindOf({SQL_TINYINT, u"tinyint", 3}, DialectOf(u"MariaDB").types), ColumnKind::Boolean);
  EXPECT_EQ(Read(u"MariaDB", u"1", ColumnKind::Boolean), Value(true));
  EXPECT_EQ(Read(u"MariaDB", u"0", ColumnKind::Boolean), Value(false));
  EXPECT_EQ(Read(u"MariaDB", u"-7", ColumnKind::Boolean), Value(std::int16_t{-7}));
}

TEST(MariadbRow, BitIsReadFromItsByte) {
  EXPECT_EQ(KindOf({SQL_BIT, u"bit", 1}, DialectOf(u"MariaDB").types), ColumnKind::Boolean);
  EXPECT_EQ(Read(u"MariaDB", std::u16string(1, u'\1'), ColumnKind::Boolean), Value(true));
  EXPECT_EQ(Read(u"MariaDB", std::u16string(1, u'\0'), ColumnKind::Boolean), Value(false));
  EXPECT_EQ(Read(u"MariaDB", u"", ColumnKind::Boolean), Value(false));
}

TEST(MariadbRow, DecimalOf19DigitsAnd4PlacesIsCurrency) {
  const auto kindOf = [](std::size_t size, std::int16_t scale) {
    return KindOf({SQL_DECIMAL, u"decimal", size, scale}, DialectOf(u"MariaDB").types);
  };
  EXPECT_EQ(kindOf(19, 4), ColumnKind::Currency);
  EXPECT_EQ(kindOf(19, 2), ColumnKind::Decimal);
  EXPECT_EQ(kindOf(10, 4), ColumnKind::Decimal);
  EXPECT_EQ(Read(u"MariaDB", u"1234.5000", ColumnKind::Currency), Value(Currency{12345000}));
  EXPECT_EQ(Read(u"MariaDB", u"999999999999999.9999", ColumnKind::Currency),
            Value(Decimal{.lo = 9999999999999999999U, .scale = 4}));
}

TEST(MariadbRow, ZeroDateReadsAsNull) {
  EXPECT_EQ(Read(u"MariaDB", u"0000-00-00 00:00:00", ColumnKind::Date), Value(Null()));
  EXPECT_EQ(Read(u"MariaDB", u"0000-00-00", ColumnKind::Date), Value(Null()));
  EXPECT_EQ(Read(u"MariaDB", u"2026-11-16", ColumnKind::Date),
            Value(automation::MakeDate({2026, 11, 16, 0, 0, 0})));
  EXPECT_EQ(Read(u"MariaDB", u"0000-00-00", ColumnKind::Text), Value(u"0000-00-00"));
}

}  // namespace
}  // namespace odbc
