// The bytes of a request file, as the DOM writes them. tests/contract/windows/msxml_bytes_test.cpp
// compares them with MSXML's own.
#include "exchange/serializer.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

namespace exchange {
namespace {

constexpr auto kDeclaration = "<?xml version='1.0' encoding='ISO-8859-1'?>\n";

TEST(Serializing, Latin1CharactersAreWrittenAsTheirBytes) {
  std::u16string text;
  for (char16_t unit = 0xA0; unit <= 0xFF; ++unit) {
    text.push_back(unit);
  }
  const std::string bytes = Serialize(Element(u"E", text));
  for (int byte = 0xA0; byte <= 0xFF; ++byte) {
    EXPECT_NE(bytes.find(static_cast<char>(byte)), std::string::npos) << byte;
  }
  EXPECT_EQ(bytes.find("&#"), std::string::npos);
}

TEST(Serializing, CharactersOutsideLatin1AreWrittenAsReferences) {
  const auto bytesOf = [](const std::u16string& text) { return Serialize(Element(u"E", text)); };
  const auto reference = [](const std::string& number) {
    return kDeclaration + std::string("<E>&#" + number + ";</E>\n");
  };
  EXPECT_EQ(bytesOf(u"\u0100"), reference("256"));
  EXPECT_EQ(bytesOf(u"\uD7FF"), reference("55295"));
  EXPECT_EQ(bytesOf(u"\uE000"), reference("57344"));
  EXPECT_EQ(bytesOf(u"\uFFFD"), reference("65533"));
  EXPECT_EQ(bytesOf(u"\U00010000"), reference("65536"));
  EXPECT_EQ(bytesOf(u"\U0010FFFF"), reference("1114111"));
}

TEST(Serializing, AttributesAreEscaped) {
  Element root(u"E");
  root.SetAttribute(u"a", u"\"<&>\n\t");
  EXPECT_EQ(Serialize(root),
            kDeclaration + std::string("<E a=\"&quot;&lt;&amp;&gt;&#10;&#9;\"/>\n"));
}

// The bytes written for "q", the code unit and "z".
struct Units {
  char32_t first;
  char32_t last;
  // "=" stands for the unit's byte, "#" for its number.
  std::string text;
  std::string attribute;
};

const auto kUnits = std::to_array<Units>({
    {0x0000, 0x0000, "q", "q"},
    {0x0001, 0x0008, "qz", "qz"},
    {0x0009, 0x0009, "q=z", "q&##;z"},
    {0x000A, 0x000A, "q=z", "q&##;z"},
    {0x000B, 0x000C, "qz", "qz"},
    {0x000D, 0x000D, "q&##;z", "q&##;z"},
    {0x000E, 0x001F, "qz", "qz"},
    {0x0020, 0x0021, "q=z", "q=z"},
    {0x0022, 0x0022, "q=z", "q&quot;z"},
    {0x0023, 0x0025, "q=z", "q=z"},
    {0x0026, 0x0026, "q&amp;z", "q&amp;z"},
    {0x0027, 0x003B, "q=z", "q=z"},
    {0x003C, 0x003C, "q&lt;z", "q&lt;z"},
    {0x003D, 0x003D, "q=z", "q=z"},
    {0x003E, 0x003E, "q&gt;z", "q&gt;z"},
    {0x003F, 0x00FF, "q=z", "q=z"},
    {0x0100, 0xD7FF, "q&##;z", "q&##;z"},
    {0xD800, 0xDFFF, "q&#65533;z", "q&#65533;z"},
    {0xE000, 0xFFFD, "q&##;z", "q&##;z"},
    {0xFFFE, 0xFFFF, "q&#65533;z", "q&#65533;z"},
});

std::string Filled(std::string pattern, char32_t unit) {
  if (const auto at = pattern.find("##"); at != std::string::npos) {
    pattern.replace(at, 2, "#" + std::to_string(std::uint32_t{unit}));
  } else if (const auto byte = pattern.find('='); byte != std::string::npos) {
    pattern[byte] = static_cast<char>(unit);
  }
  return pattern;
}

TEST(Serializing, EveryUnitIsWrittenAsTheDomWritesIt) {
  char32_t next = 0;
  for (const auto& [first, last, text, attribute] : kUnits) {
    ASSERT_EQ(first, next);
    for (; next <= last; ++next) {
      const std::u16string content{u'q', static_cast<char16_t>(next), u'z'};
      Element element(u"E", content);
      element.SetAttribute(u"a", content);
      ASSERT_EQ(Serialize(element), kDeclaration + ("<E a=\"" + Filled(attribute, next)) + "\">" +
                                        Filled(text, next) + "</E>\n")
          << std::hex << static_cast<std::uint32_t>(next);
    }
  }
  EXPECT_EQ(next, 0x10000U);
}

TEST(Serializing, HalvesOfSurrogatePairsAreReplaced) {
  const auto bytesOf = [](const std::u16string& text) { return Serialize(Element(u"E", text)); };
  const auto withText = [](const std::string& text) {
    return kDeclaration + ("<E>" + text) + "</E>\n";
  };
  EXPECT_EQ(bytesOf({0xD83D}), withText("&#65533;"));
  EXPECT_EQ(bytesOf({0xDE00, 0xD83D}), withText("&#65533;&#65533;"));
  EXPECT_EQ(bytesOf({0xD83D, 0xD83D, 0xDE00}), withText("&#65533;&#128512;"));
  EXPECT_EQ(bytesOf({0xDBFF, 0xE000}), withText("&#65533;&#57344;"));
}

TEST(Serializing, ElementWithNothingLeftIsWrittenAsEmpty) {
  const std::string empty = kDeclaration + std::string("<E/>\n");
  EXPECT_EQ(Serialize(Element(u"E", u"\u0001\u001F")), empty);
  EXPECT_EQ(Serialize(Element(u"E", std::u16string(u"\0x", 2))), empty);
  Element root(u"E", u"\u0001");
  root.Add(u"F");
  EXPECT_EQ(Serialize(root), kDeclaration + std::string("<E><F/></E>\n"));
}

}  // namespace
}  // namespace exchange
