#include "util/null_safe.h"

#include "util_fixture.h"

namespace util {
namespace {

using automation::Value;

class NullSafeReaders : public UtilTest {};

TEST_F(NullSafeReaders, NullReadsAsEmptyTextFalseAndZero) {
  EXPECT_EQ(NullToText(automation::Null()), u"");
  EXPECT_FALSE(NullToBool(automation::Null()));
  EXPECT_EQ(NullToZero(automation::Null()), Value(std::int16_t{0}));
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(NullSafeReaders, UnsetValueReadsAsEmptyTextFalseAndZero) {
  EXPECT_EQ(NullToText(automation::Empty()), u"");
  EXPECT_FALSE(NullToBool(automation::Empty()));
  EXPECT_TRUE(NullToZero(automation::Empty()).IsEmpty());
}

TEST_F(NullSafeReaders, NumbersAndDatesReadAsTextInTheUsersFormat) {
  EXPECT_EQ(NullToText(u"Åsa"), u"Åsa");
  EXPECT_EQ(NullToText(681), u"681");
  EXPECT_EQ(NullToText(true), u"True");
  EXPECT_EQ(NullToText(12.5), u"12,5");
  EXPECT_EQ(NullToText(Day(2002, 7, 1)), u"2002-07-01");
  UseUsLocale();
  EXPECT_EQ(NullToText(12.5), u"12.5");
  EXPECT_EQ(NullToText(Day(2002, 7, 1)), u"7/1/2002");
}

TEST_F(NullSafeReaders, EveryNumberButZeroReadsAsTrue) {
  EXPECT_TRUE(NullToBool(true));
  EXPECT_TRUE(NullToBool(std::int16_t{-1}));
  EXPECT_TRUE(NullToBool(2));
  EXPECT_TRUE(NullToBool(0.1));
  EXPECT_TRUE(NullToBool(u"true"));
  EXPECT_TRUE(NullToBool(u"1"));
  EXPECT_FALSE(NullToBool(false));
  EXPECT_FALSE(NullToBool(0));
  EXPECT_FALSE(NullToBool(u"False"));
  EXPECT_FALSE(NullToBool(u"0"));
}

TEST_F(NullSafeReaders, NonNullValueIsUnchanged) {
  EXPECT_EQ(NullToZero(12.5), Value(12.5));
  EXPECT_EQ(NullToZero(u"abc"), Value(u"abc"));
  EXPECT_EQ(NullToZero(automation::Currency{12345}), Value(automation::Currency{12345}));
}

TEST_F(NullSafeReaders, UnreadableValueShowsErrorAndGivesTheEmptyValue) {
  EXPECT_FALSE(NullToBool(u"ja"));
  EXPECT_EQ(NullToText(kNoDate), u"");
  EXPECT_EQ(dialogs.shown, (Boxes{ErrorBox(u"13 Type mismatch in NullToBool"),
                                  ErrorBox(u"6 Overflow in NullToText")}));
}

}  // namespace
}  // namespace util
