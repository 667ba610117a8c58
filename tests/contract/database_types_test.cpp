// The value that a field has for each type of the host's schema.
#include "contract/database_fixture.h"

namespace contract {
namespace {

using automation::Currency;
using automation::Decimal;
using automation::Value;

class TypesContract : public DatabaseContract {
 protected:
  // The value of `column` after `literal` was stored in it.
  Value Stored(const std::u16string& column, const std::u16string& literal) {
    Run(u"DELETE FROM Trial");
    Run(u"INSERT INTO Trial (" + column + u") VALUES (" + literal + u")");
    return Query(u"SELECT " + column + u" FROM Trial")->Field(0);
  }
};

INSTANTIATE_TEST_SUITE_P(Products, TypesContract, testing::ValuesIn(Products()),
                         [](const auto& instance) { return instance.param.name; });

std::u16string InQuotes(const std::u16string& text) {
  return u"'" + text + u"'";
}

TEST_P(TypesContract, IntegersKeepTheirWidth) {
  EXPECT_EQ(Stored(u"Number", u"2147483647"), Value(std::int32_t{2147483647}));
  EXPECT_EQ(Stored(u"Number", u"-2147483648"), Value(std::int32_t{-2147483647 - 1}));
  EXPECT_EQ(Stored(u"Small", u"-32768"), Value(std::int16_t{-32768}));
}

TEST_P(TypesContract, WideIntegerIs32BitWhenItFitsAndADecimalOtherwise) {
  EXPECT_EQ(Stored(u"Big", u"7"), Value(std::int32_t{7}));
  EXPECT_EQ(Stored(u"Big", u"2147483648"), Value(Decimal{.lo = 2147483648}));
  EXPECT_EQ(Stored(u"Big", u"-9223372036854775807"),
            Value(Decimal{.lo = 9223372036854775807U, .negative = true}));
}

TEST_P(TypesContract, CountIsA32BitNumber) {
  EXPECT_EQ(Query(u"SELECT COUNT(*) AS Antal FROM Trial")->Field(u"Antal"), Value(std::int32_t{0}));
}

TEST_P(TypesContract, BooleansAreBooleans) {
  EXPECT_EQ(Stored(u"Flag", u"true"), Value(true));
  EXPECT_EQ(Stored(u"Flag", u"false"), Value(false));
}

TEST_P(TypesContract, DoublesAreDoubles) {
  EXPECT_EQ(Stored(u"Ratio", u"0.1"), Value(0.1));
  EXPECT_EQ(Stored(u"Ratio", u"-1e100"), Value(-1e100));
}

TEST_P(TypesContract, SinglesAreDoublesOfTheirSevenDigits) {
  EXPECT_EQ(Stored(u"Single", u"1.1"), Value(1.1));
  EXPECT_EQ(Stored(u"Single", u"16777216"),
            Value(GetParam().singlesAreDoubles ? 16777216.0 : 16777220.0));
}

TEST_P(TypesContract, NumericsAreDecimals) {
  const auto amount = Stored(u"Amount", u"-1234.56");
  EXPECT_EQ(amount, Value(Decimal{.lo = 123456, .scale = 2, .negative = true}));
}

TEST_P(TypesContract, AmountsOfMoneyAreCurrency) {
  EXPECT_EQ(Stored(u"Price", u"1234.5"), Value(Currency{12345000}));
  EXPECT_EQ(Stored(u"Price", u"-1234.5"), Value(Currency{-12345000}));
}

TEST_P(TypesContract, TimestampsAndDatesAreDates) {
  EXPECT_EQ(Stored(u"Moment", u"'2026-11-16 14:05:09'"), Value(Moment(2026, 11, 16, 14, 5, 9)));
  EXPECT_EQ(Stored(u"Moment", u"'2026-11-16 00:00:00'"), Value(Moment(2026, 11, 16)));
  EXPECT_EQ(Stored(u"Day", u"'1912-03-01'"), Value(Moment(1912, 3, 1)));
  EXPECT_EQ(Stored(u"Day", u"'1899-12-29'"), Value(Moment(1899, 12, 29)));
}

TEST_P(TypesContract, FractionOfASecondIsDropped) {
  EXPECT_EQ(Stored(u"Moment", u"'2026-11-16 14:05:09.75'"), Value(Moment(2026, 11, 16, 14, 5, 9)));
}

TEST_P(TypesContract, TimeOfDayIsADateOnDayZero) {
  EXPECT_EQ(Stored(u"Clock", u"'06:00:00'"), Value(automation::Date{0.25}));
}

TEST_P(TypesContract, TextIsNotTrimmed) {
  EXPECT_EQ(Stored(u"Name", u"'  a b  '"), Value(u"  a b  "));
  EXPECT_EQ(Stored(u"Note", u"' x '"), Value(u" x "));
}

TEST_P(TypesContract, EmptyTextIsNotNull) {
  EXPECT_EQ(Stored(u"Name", u"''"), Value(u""));
}

TEST_P(TypesContract, SwedishLettersAndSurrogatePairsAreKept) {
  for (const std::u16string text :
       {u"åäö ÅÄÖ é ü", u"Förhandsprövning, ärendenr: ", u"😀 mun 😀", u"\u4E2D\u6587"}) {
    EXPECT_EQ(Stored(u"Name", InQuotes(text)), Value(text));
    EXPECT_EQ(Stored(u"Note", InQuotes(text)), Value(text));
  }
}

TEST_P(TypesContract, QuotesLineEndsAndBracesAreKept) {
  EXPECT_EQ(Stored(u"Note", u"'O''Brien'"), Value(u"O'Brien"));
  EXPECT_EQ(Stored(u"Note", u"'a\"b'"), Value(u"a\"b"));
  EXPECT_EQ(Stored(u"Note", u"'one\r\ntwo\tthree'"), Value(u"one\r\ntwo\tthree"));
  EXPECT_EQ(Stored(u"Note", u"'{d ?} -- /* \\'"), Value(u"{d ?} -- /* \\"));
}

TEST_P(TypesContract, LongTextsAreReadCompletely) {
  // Around the buffer sizes of a reader, and far beyond them.
  for (const std::size_t length :
       {1022U, 1023U, 1024U, 1025U, 2046U, 4095U, 8190U, 10000U, 70000U}) {
    std::u16string text;
    for (std::size_t i = 0; text.size() < length; ++i) {
      text += i % 7 == 0 ? u"å" : i % 11 == 0 ? u"😀" : u"x";
    }
    EXPECT_TRUE(Stored(u"Note", InQuotes(text)) == Value(text)) << length;
  }
}

TEST_P(TypesContract, NullIsNullInEveryColumn) {
  Run(u"INSERT INTO Trial (Number) VALUES (NULL)");
  const auto row = Query(
      u"SELECT Number, Small, Big, Flag, Ratio, Amount, Price, Moment, Day, Clock, Name, Code,"
      u" Note FROM Trial");
  for (std::int32_t i = 0; i < 13; ++i) {
    EXPECT_TRUE(row->Field(i).IsNull()) << i;
  }
}

TEST_P(TypesContract, ManyRowsAndColumnsAreReadCompletely) {
  for (int i = 0; i < 200; ++i) {
    Run(u"INSERT INTO Trial (Number, Name) VALUES (" + automation::Decimal10(i) + u", 'n" +
        automation::Decimal10(i) + u"')");
  }
  const auto rows = Query(u"SELECT * FROM Trial ORDER BY Number");
  for (std::int32_t i = 0; i < 200; ++i, rows->MoveNext()) {
    ASSERT_EQ(rows->Field(u"Number"), Value(i));
    ASSERT_EQ(rows->Field(u"Name"), Value(u"n" + automation::Decimal10(i)));
  }
  EXPECT_TRUE(rows->Eof());
}

}  // namespace
}  // namespace contract
