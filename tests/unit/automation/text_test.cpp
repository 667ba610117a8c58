#include "automation/text.h"

#include <gtest/gtest.h>
#include <limits>
#include <string_view>

#include "fakes/printing.h"

namespace automation {
namespace {

using fakes::ErrorNumberOf;

TEST(Utf8, EveryCharacterIsConvertedToUtf8AndBack) {
  const std::u16string text = u"Åsa é \u00A0 € 中 \U0001F600 \uFFFD";
  EXPECT_EQ(FromUtf8(ToUtf8(text)), text);
  EXPECT_EQ(ToUtf8(u"Ö"), "\xC3\x96");
}

TEST(Utf8, MalformedUtf8IsMadeVisible) {
  EXPECT_EQ(FromUtf8("a\xFF"
                     "b"),
            u"a\uFFFDb");
  EXPECT_EQ(FromUtf8("\xC3"), u"\uFFFD");
  EXPECT_EQ(FromUtf8("\xC0\x80").find(u'\0'), std::u16string::npos);
  EXPECT_EQ(FromUtf8("\xED\xA0\x80").front(), u'\uFFFD');
  const char16_t half[] = {0xD800, u'x', 0};
  EXPECT_EQ(ToUtf8(half), "\xEF\xBF\xBDx");
}

TEST(Pieces, TextPiecesKeepTheClassicEdgeCases) {
  EXPECT_EQ(Left(u"abc", 5), u"abc");
  EXPECT_EQ(Left(u"abc", 0), u"");
  EXPECT_EQ(Right(u"abc", 2), u"bc");
  EXPECT_EQ(Right(u"abc", 9), u"abc");
  EXPECT_EQ(Mid(u"abc", 2, 1), u"b");
  EXPECT_EQ(Mid(u"abc", 2, 99), u"bc");
  EXPECT_EQ(Mid(u"abc", 9, 1), u"");
  EXPECT_EQ(Mid(u"abc", 3), u"c");
}

TEST(Pieces, TextPieceOfNegativeLengthRaisesInvalidArgument) {
  EXPECT_EQ(ErrorNumberOf([] { Left(u"abc", -1); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { Right(u"abc", -1); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { Mid(u"abc", 1, -1); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { Mid(u"abc", 0, 1); }), 5);
  EXPECT_EQ(ErrorNumberOf([] { InStr(0, u"abc", u"b"); }), 5);
}

TEST(Positions, PositionsCountFromOneAndZeroIsNone) {
  EXPECT_EQ(InStr(1, u"a&b&c", u"&"), 2);
  EXPECT_EQ(InStr(3, u"a&b&c", u"&"), 4);
  EXPECT_EQ(InStr(5, u"a&b&c", u"&"), 0);
  EXPECT_EQ(InStr(99, u"a&b&c", u"&"), 0);
  EXPECT_EQ(InStr(1, u"", u"&"), 0);
  EXPECT_EQ(InStr(1, u"", u""), 0);
  EXPECT_EQ(InStr(2, u"abc", u""), 2);
}

TEST(Splitting, SplitCountsEmptyPieces) {
  EXPECT_EQ(Split(u"a b", u' '), (std::vector<std::u16string>{u"a", u"b"}));
  EXPECT_EQ(Split(u"a  b ", u' '), (std::vector<std::u16string>{u"a", u"", u"b", u""}));
  EXPECT_TRUE(Split(u"", u' ').empty());
}

TEST(Letters, LettersAreComparedAndReplacedIgnoringCase) {
  EXPECT_TRUE(EqualsNoCase(u"Åsa", u"åSA"));
  EXPECT_FALSE(EqualsNoCase(u"Åsa", u"Asa"));
  EXPECT_EQ(UCase(u"åäöé÷ÿß"), u"ÅÄÖÉ÷ÿß");
  EXPECT_EQ(ReplaceNoCase(u"yyYY-mm", u"YYYY", u"2026"), u"2026-mm");
  EXPECT_EQ(ReplaceNoCase(u"aaa", u"a", u"aa"), u"aaaaaa");
  EXPECT_EQ(ReplaceNoCase(u"abc", u"", u"x"), u"abc");
}

TEST(Trimming, TrimTakesOnlyBlanksAtTheEnds) {
  EXPECT_EQ(Trim(u"  a b "), u"a b");
  EXPECT_EQ(Trim(u"\ta"), u"\ta");
  EXPECT_EQ(Trim(u"   "), u"");
}

TEST(DecimalTexts, DecimalTextIsPlain) {
  EXPECT_EQ(Decimal10(0), u"0");
  EXPECT_EQ(Decimal10(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
}

TEST(Utf8, Utf8ChangesLengthAtItsBounds) {
  struct Known {
    std::u16string units;
    std::string bytes;
  };
  for (const auto& [units, bytes] :
       {Known{u"\u007F", "\x7F"}, Known{u"\u0080", "\xC2\x80"}, Known{u"\u07FF", "\xDF\xBF"},
        Known{u"\u0800", "\xE0\xA0\x80"}, Known{u"\uD7FF", "\xED\x9F\xBF"},
        Known{u"\uE000", "\xEE\x80\x80"}, Known{u"\uFFFF", "\xEF\xBF\xBF"},
        Known{u"\U00010000", "\xF0\x90\x80\x80"}, Known{u"\U0001F9B7", "\xF0\x9F\xA6\xB7"},
        Known{u"\U0010FFFF", "\xF4\x8F\xBF\xBF"}}) {
    EXPECT_EQ(ToUtf8(units), bytes);
    EXPECT_EQ(FromUtf8(bytes), units) << bytes;
    EXPECT_EQ(FromUtf8(bytes + "x"), units + u"x") << bytes;
  }
}

TEST(Utf8, OverlongUtf8IsRefused) {
  for (const char* bytes :
       {"\x80", "\xA2\x80", "\xF8\x90\x80\x80", "\xC1\xBF", "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF",
        "\xF4\x90\x80\x80", "\xF5\x80\x80\x80", "\xED\xA0\x80", "\xED\xBF\xBF", "\xE2\x82",
        "\xF0\x90\x80", "\xE2\x28\x80", "\xC3\xC3", "\xE2\x82\xC0"}) {
    const std::u16string read = FromUtf8(bytes);
    EXPECT_EQ(read.front(), u'\uFFFD') << bytes;
  }
  EXPECT_EQ(FromUtf8("\xC3\xC3\xA5"), u"\uFFFDå");
  EXPECT_EQ(FromUtf8("\xE2\x82x"), u"\uFFFD\uFFFDx");
}

TEST(Utf8, Utf8IsNotReadBeyondItsEnd) {
  EXPECT_EQ(FromUtf8(std::string_view("\xC3\xA5", 1)), u"\uFFFD");
  EXPECT_EQ(ToUtf8(std::u16string_view(u"\U0001F9B7", 1)), "\xEF\xBF\xBD");
}

TEST(Utf8, HalfSurrogatePairIsNotWrittenAsUtf8) {
  const auto bytes = [](std::initializer_list<char16_t> units) {
    return ToUtf8(std::u16string(units));
  };
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(bytes({0xD800, 0xDC00}), "\xF0\x90\x80\x80");
  EXPECT_EQ(bytes({0xDBFF, 0xDFFF}), "\xF4\x8F\xBF\xBF");
  EXPECT_EQ(bytes({0xD800, 0xE000}), replacement + "\xEE\x80\x80");
  EXPECT_EQ(bytes({0xD800, 0xDBFF}), replacement + replacement);
  EXPECT_EQ(bytes({0xDC00, 0xDC00}), replacement + replacement);
  EXPECT_EQ(bytes({0xDFFF}), replacement);
  EXPECT_EQ(bytes({u'x', 0xD800}), "x" + replacement);
}

TEST(Pieces, TextPieceMayBeEmptyAndBeginAtTheFirstCharacter) {
  EXPECT_EQ(Left(u"abc", 2), u"ab");
  EXPECT_EQ(Left(u"abc", 3), u"abc");
  EXPECT_EQ(Right(u"abc", 0), u"");
  EXPECT_EQ(Right(u"abc", 3), u"abc");
  EXPECT_EQ(Mid(u"abc", 1, 0), u"");
  EXPECT_EQ(Mid(u"abc", 1), u"abc");
  EXPECT_EQ(Mid(u"abc", 3, 1), u"c");
  EXPECT_EQ(Mid(u"abc", 4), u"");
  EXPECT_EQ(ErrorNumberOf([] { Mid(u"abc", 0); }), 5);
}

TEST(Letters, Latin1LettersHaveCapitals) {
  EXPECT_EQ(UCase(u"`az{"), u"`AZ{");
  EXPECT_EQ(UCase(u"\u00DF\u00E0\u00F6\u00F7\u00F8\u00FE\u00FF"),
            u"\u00DF\u00C0\u00D6\u00F7\u00D8\u00DE\u00FF");
  EXPECT_FALSE(EqualsNoCase(u"abc", u"ab"));
}

TEST(Replacing, ReplaceIgnoresCaseOfAsciiLettersOnly) {
  EXPECT_EQ(ReplaceNoCase(u"[AZ]{az}", u"z", u"-"), u"[A-]{a-}");
  EXPECT_EQ(ReplaceNoCase(u"[AZ]{az}", u"A", u"-"), u"[-Z]{-z}");
  EXPECT_EQ(ReplaceNoCase(u"@`", u"`", u"-"), u"@-");
  EXPECT_EQ(ReplaceNoCase(u"[{", u"{", u"-"), u"[-");
  EXPECT_EQ(ReplaceNoCase(u"Åå", u"å", u"-"), u"Å-");
}

}  // namespace
}  // namespace automation
