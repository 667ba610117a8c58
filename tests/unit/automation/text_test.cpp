#include "automation/text.h"

#include <gtest/gtest.h>
#include <limits>

#include "fakes/printing.h"

namespace automation {
namespace {

using fakes::ErrorNumberOf;

TEST(Utf8, CarriesEveryCharacterBothWays) {
  const std::u16string text = u"Åsa é \u00A0 € 中 \U0001F600 \uFFFD";
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
  EXPECT_EQ(ToUtf8(u"Ö"), "\xC3\x96");
}

TEST(Utf8, MakesMalformedInputVisible) {
  EXPECT_EQ(FromUtf8("a\xFF"
                     "b"),
            u"a\uFFFDb");
  EXPECT_EQ(FromUtf8("\xC3"), u"\uFFFD");
  EXPECT_EQ(FromUtf8("\xC0\x80").find(u'\0'), std::u16string::npos);
  EXPECT_EQ(FromUtf8("\xED\xA0\x80").front(), u'\uFFFD');
  const char16_t half[] = {0xD800, u'x', 0};
  EXPECT_EQ(ToUtf8(half), "\xEF\xBF\xBDx");
}

TEST(Pieces, KeepTheClassicEdgeCases) {
  EXPECT_EQ(Left(u"abc", 5), u"abc");
  EXPECT_EQ(Left(u"abc", 0), u"");
  EXPECT_EQ(Right(u"abc", 2), u"bc");
  EXPECT_EQ(Right(u"abc", 9), u"abc");
  EXPECT_EQ(Mid(u"abc", 2, 1), u"b");
  EXPECT_EQ(Mid(u"abc", 2, 99), u"bc");
  EXPECT_EQ(Mid(u"abc", 9, 1), u"");
  EXPECT_EQ(Mid(u"abc", 3), u"c");
}

TEST(Pieces, OfNegativeLengthRaiseInvalidArgument) {
  EXPECT_EQ(ErrorNumberOf([] { Left(u"abc", -1); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { Right(u"abc", -1); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { Mid(u"abc", 1, -1); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { Mid(u"abc", 0, 1); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { InStr(0, u"abc", u"b"); }), 5);
}

TEST(Positions, CountFromOneAndAreZeroForNone) {
  EXPECT_EQ(InStr(1, u"a&b&c", u"&"), 2);
  EXPECT_EQ(InStr(3, u"a&b&c", u"&"), 4);
  EXPECT_EQ(InStr(5, u"a&b&c", u"&"), 0);
  EXPECT_EQ(InStr(99, u"a&b&c", u"&"), 0);
  EXPECT_EQ(InStr(1, u"", u"&"), 0);
  EXPECT_EQ(InStr(2, u"abc", u""), 2);
}

TEST(Splitting, CountsEmptyPieces) {
  EXPECT_EQ(Split(u"a b", u' '), (std::vector<std::u16string>{u"a", u"b"}));
  EXPECT_EQ(Split(u"a  b ", u' '), (std::vector<std::u16string>{u"a", u"", u"b", u""}));
  EXPECT_TRUE(Split(u"", u' ').empty());
}

TEST(Letters, AreComparedAndReplacedWithoutRegardToCase) {
  EXPECT_TRUE(EqualsNoCase(u"Åsa", u"åSA"));
  EXPECT_FALSE(EqualsNoCase(u"Åsa", u"Asa"));
  EXPECT_EQ(UCase(u"åäöé÷ÿß"), u"ÅÄÖÉ÷ÿß");
  EXPECT_EQ(ReplaceNoCase(u"yyYY-mm", u"YYYY", u"2026"), u"2026-mm");
  EXPECT_EQ(ReplaceNoCase(u"aaa", u"a", u"aa"), u"aaaaaa");
  EXPECT_EQ(ReplaceNoCase(u"abc", u"", u"x"), u"abc");
}

TEST(Trimming, TakesBlanksOnlyAndOnlyAtTheEnds) {
  EXPECT_EQ(Trim(u"  a b "), u"a b");
  EXPECT_EQ(Trim(u"\ta"), u"\ta");
  EXPECT_EQ(Trim(u"   "), u"");
}

TEST(DecimalTexts, ArePlain) {
  EXPECT_EQ(Decimal10(0), u"0");
  EXPECT_EQ(Decimal10(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
}

}  // namespace
}  // namespace automation
