// The bytes of a request file, as the DOM writes them. tests/contract/windows/msxml_bytes_test.cpp
// compares them with MSXML's own.
#include "exchange/request_document.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace exchange {
namespace {

std::string Enveloped(const std::string& content) {
  return "<?xml version='1.0' encoding='ISO-8859-1'?>\n<Envelope LIFFVersion=\"2.0\">" + content +
         "</Envelope>\n";
}

// The document of one element with a text.
std::string DocumentWith(Pieces text) {
  RequestDocument document;
  document.Add("E", text);
  return std::string(document.Finish());
}

TEST(RequestDocuments, Latin1CharactersAreWrittenAsTheirBytes) {
  std::u16string text;
  for (char16_t unit = 0xA0; unit <= 0xFF; ++unit) {
    text.push_back(unit);
  }
  const std::string bytes = DocumentWith({text});
  for (int byte = 0xA0; byte <= 0xFF; ++byte) {
    EXPECT_NE(bytes.find(static_cast<char>(byte)), std::string::npos) << byte;
  }
  EXPECT_EQ(bytes.find("&#"), std::string::npos);
}

TEST(RequestDocuments, CharactersOutsideLatin1AreWrittenAsReferences) {
  const auto bytesOf = [](const std::u16string& text) { return DocumentWith({text}); };
  const auto reference = [](const std::string& number) {
    return Enveloped("<E>&#" + number + ";</E>");
  };
  EXPECT_EQ(bytesOf(u"\u0100"), reference("256"));
  EXPECT_EQ(bytesOf(u"\uD7FF"), reference("55295"));
  EXPECT_EQ(bytesOf(u"\uE000"), reference("57344"));
  EXPECT_EQ(bytesOf(u"\uFFFD"), reference("65533"));
  EXPECT_EQ(bytesOf(u"\U00010000"), reference("65536"));
  EXPECT_EQ(bytesOf(u"\U0010FFFF"), reference("1114111"));
}

// The bytes written for "q", the code unit and "z".
struct Units {
  char32_t first;
  char32_t last;
  // "=" stands for the unit's byte, "#" for its number.
  std::string text;
};

const auto kUnits = std::to_array<Units>({
    {0x0000, 0x0000, "q"},      {0x0001, 0x0008, "qz"},         {0x0009, 0x0009, "q=z"},
    {0x000A, 0x000A, "q=z"},    {0x000B, 0x000C, "qz"},         {0x000D, 0x000D, "q&##;z"},
    {0x000E, 0x001F, "qz"},     {0x0020, 0x0021, "q=z"},        {0x0022, 0x0022, "q=z"},
    {0x0023, 0x0025, "q=z"},    {0x0026, 0x0026, "q&amp;z"},    {0x0027, 0x003B, "q=z"},
    {0x003C, 0x003C, "q&lt;z"}, {0x003D, 0x003D, "q=z"},        {0x003E, 0x003E, "q&gt;z"},
    {0x003F, 0x00FF, "q=z"},    {0x0100, 0xD7FF, "q&##;z"},     {0xD800, 0xDFFF, "q&#65533;z"},
    {0xE000, 0xFFFD, "q&##;z"}, {0xFFFE, 0xFFFF, "q&#65533;z"},
});

std::string Filled(std::string pattern, char32_t unit) {
  if (const auto at = pattern.find("##"); at != std::string::npos) {
    pattern.replace(at, 2, "#" + std::to_string(std::uint32_t{unit}));
  } else if (const auto byte = pattern.find('='); byte != std::string::npos) {
    pattern[byte] = static_cast<char>(unit);
  }
  return pattern;
}

TEST(RequestDocuments, EveryUnitIsWrittenAsTheDomWritesIt) {
  char32_t next = 0;
  for (const auto& [first, last, text] : kUnits) {
    ASSERT_EQ(first, next);
    for (; next <= last; ++next) {
      const std::u16string content{u'q', static_cast<char16_t>(next), u'z'};
      ASSERT_EQ(DocumentWith({content}), Enveloped("<E>" + Filled(text, next) + "</E>"))
          << std::hex << static_cast<std::uint32_t>(next);
    }
  }
  EXPECT_EQ(next, 0x10000U);
}

TEST(RequestDocuments, HalvesOfSurrogatePairsAreReplaced) {
  const auto bytesOf = [](const std::u16string& text) { return DocumentWith({text}); };
  const auto withText = [](const std::string& text) { return Enveloped("<E>" + text + "</E>"); };
  EXPECT_EQ(bytesOf({0xD83D}), withText("&#65533;"));
  EXPECT_EQ(bytesOf({0xDE00, 0xD83D}), withText("&#65533;&#65533;"));
  EXPECT_EQ(bytesOf({0xD83D, 0xD83D, 0xDE00}), withText("&#65533;&#128512;"));
  EXPECT_EQ(bytesOf({0xDBFF, 0xE000}), withText("&#65533;&#57344;"));
}

TEST(RequestDocuments, ElementWithNothingLeftIsWrittenAsEmpty) {
  EXPECT_EQ(DocumentWith({}), Enveloped("<E/>"));
  EXPECT_EQ(DocumentWith({u"", u""}), Enveloped("<E/>"));
  EXPECT_EQ(DocumentWith({u"\u0001\u001F"}), Enveloped("<E/>"));
  EXPECT_EQ(DocumentWith({std::u16string(u"\0x", 2)}), Enveloped("<E/>"));
  RequestDocument document;
  document.Add("E", [] {});
  EXPECT_EQ(document.Finish(), Enveloped("<E/>"));
}

TEST(RequestDocuments, ElementHoldsWhatIsAddedInItsScope) {
  RequestDocument document;
  document.Add("E", [&] {
    document.Add("F", {});
    document.Add("G", [&] { document.Add("H", {u"1"}); });
  });
  document.Add("I", {u"2"});
  EXPECT_EQ(document.Finish(), Enveloped("<E><F/><G><H>1</H></G></E><I>2</I>"));
}

TEST(RequestDocuments, PiecesOfATextAreJoined) {
  EXPECT_EQ(DocumentWith({u"An", u"", u"na", u" ", u"<"}), Enveloped("<E>Anna &lt;</E>"));
}

TEST(RequestDocuments, TextEndsAtANulInAnyOfItsPieces) {
  EXPECT_EQ(DocumentWith({u"Anna", std::u16string(u" \0x", 3), u"Berg"}),
            Enveloped("<E>Anna </E>"));
}

TEST(RequestDocuments, LongDocumentIsWrittenWhole) {
  const std::u16string text(100'000, u'\u00C5');
  EXPECT_EQ(DocumentWith({text}), Enveloped("<E>" + std::string(text.size(), '\xC5') + "</E>"));
}

}  // namespace
}  // namespace exchange
