// What is passed to a parser.
#include "parser_limits/parser_limits.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace parser_limits {
namespace {

std::string Times(std::size_t count, std::string_view text) {
  std::string times;
  for (; count > 0; --count) {
    times += text;
  }
  return times;
}

std::string Wide(std::string_view text, bool lowFirst) {
  std::string wide;
  for (const char character : text) {
    wide += lowFirst ? std::string{character, '\0'} : std::string{'\0', character};
  }
  return wide;
}

TEST(FitToParse, WellFormedDocumentsAreFitToParse) {
  for (const std::string_view document :
       {"<a/>",
        "<a></a>",
        "<a ></a\r\n>",
        "<a>x</a>\n",
        "\xEF\xBB\xBF<a/>",
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n<a/>",
        "<?a ?><!----><!-- - > & < x --><a/>",
        "<a b='' c = \"'>]]>&lt;&#13;\"\n\td\t=\n'\"'/>",
        "<a:b xmlns:a='c'/>",
        "<a><![CDATA[<b>&c;]] >--]]]></a>",
        "<a><b>x<c/>y</b>z</a>",
        "<\xC3\xA5\xC4\x81/>",
        "<a>&amp;&lt;&gt;&quot;&apos;&#9;&#10;&#13;&#32;&#x20;&#xd7FF;&#xE000;&#65533;"
        "&#x10000;&#x10fffF;&#0000000065;</a>",
        "<!DOCTYPE a><a/>",
        "<!DOCTYPE\na\t>\n<!----><a/>",
        "<!DOCTYPE a SYSTEM 'a.dtd'><a/>",
        "<?xml version='1.0'?><!DOCTYPE a SYSTEM\t\"'>[<\" ><a/>",
        "<!DOCTYPE a PUBLIC '-//a' \"a.dtd\"><a/>",
        "<!DOCTYPE a  PUBLIC  ''  '' ><a/>",
        "<a>]] ]> > ; - = \" ' \x7F \x80 \xFF</a>",
        "<a>\xED\x9F\xBF\xEF\xBF\xBD</a>"}) {
    EXPECT_TRUE(IsFitToParse(document)) << document;
  }
}

TEST(FitToParse, MalformedDocumentsAreNotFitToParse) {
  for (const std::string_view document : {"",
                                          "no document",
                                          "<!---->",
                                          "\x4C\x81\x61\x6E",
                                          "<a>",
                                          "</a>",
                                          "<a></a></a>",
                                          "<a/",
                                          "<a",
                                          "<",
                                          "<a><",
                                          "< a/>",
                                          "<a b/>",
                                          "<a b=/>",
                                          "<a b=c/>",
                                          "<a b='/>",
                                          "<a b='\"/>",
                                          "<a b='<'/>",
                                          "<a b=''c=''/>",
                                          "<a =''/>",
                                          "<a b=''/ >",
                                          "<a\x01/>",
                                          "<a b\x02=''/>",
                                          "<a></>",
                                          "<a></ a>",
                                          "<a></a b=''>",
                                          "<?a",
                                          "<?a >",
                                          "<?a \x01?>",
                                          "<!-- -- --><a/>",
                                          "<!-- --- ><a/>",
                                          "<!--\x1F--><a/>",
                                          "<!-- ",
                                          "<a><![CDATA[x]]</a>",
                                          "<a><![CDATA[\x0B]]></a>",
                                          "<!DOCTYPE><a/>",
                                          "<!DOCTYPE ><a/>",
                                          "<!DOCTYPEa><a/>",
                                          "<!DOCTYPE a",
                                          "<!DOCTYPE a/><a/>",
                                          "<!DOCTYPE a><!DOCTYPE a><a/>",
                                          "<a/><!DOCTYPE a>",
                                          "<a><!DOCTYPE a></a>",
                                          "<!DOCTYPE a[]><a/>",
                                          "<!DOCTYPE a []><a/>",
                                          "<!DOCTYPE a [ ]><a/>",
                                          "<!DOCTYPE a[%b;]><a/>",
                                          "<!DOCTYPE a [<!ENTITY b 'c'>]><a/>",
                                          "<!DOCTYPE a SYSTEM 'a.dtd' []><a/>",
                                          "<!DOCTYPE a SYSTEM 'a.dtd'[<!ENTITY b 'c'>]><a/>",
                                          "<!DOCTYPE a SYSTEM><a/>",
                                          "<!DOCTYPE a SYSTEM'a.dtd'><a/>",
                                          "<!DOCTYPE a SYSTEM a.dtd><a/>",
                                          "<!DOCTYPE a SYSTEM 'a.dtd><a/>",
                                          "<!DOCTYPE a SYSTEM '\x01'><a/>",
                                          "<!DOCTYPE a SYSTEM 'a' 'b'><a/>",
                                          "<!DOCTYPE a PUBLIC 'a'><a/>",
                                          "<!DOCTYPE a PUBLIC 'a''b'><a/>",
                                          "<!DOCTYPE a PUBLIC 'a' 'b' 'c'><a/>",
                                          "<!DOCTYPE a 'b'><a/>",
                                          "<!DOCTYPE a system 'b'><a/>",
                                          "<!DOCTYPE a SYSTEM 'b'><a>&c;</a>",
                                          "<!doctype a><a/>",
                                          "<![cdata[]]>",
                                          "<a>]]></a>",
                                          "<a>\x08</a>",
                                          "<a b='\x0C'/>",
                                          "<a>&</a>",
                                          "<a>& </a>",
                                          "<a>&amp</a>",
                                          "<a>&b;</a>",
                                          "<a>&Amp;</a>",
                                          "<a>&;</a>",
                                          "<a>&#;</a>",
                                          "<a>&#x;</a>",
                                          "<a>&#X41;</a>",
                                          "<a>&#6a;</a>",
                                          "<a>&#xg;</a>",
                                          "<a>&#-1;</a>",
                                          "<a>&#0;</a>",
                                          "<a>&#8;</a>",
                                          "<a>&#11;</a>",
                                          "<a>&#12;</a>",
                                          "<a>&#31;</a>",
                                          "<a>&#xD800;</a>",
                                          "<a>&#xDFFF;</a>",
                                          "<a>&#xFFFE;</a>",
                                          "<a>&#xFFFF;</a>",
                                          "<a>&#x110000;</a>",
                                          "<a>&#4294967361;</a>",
                                          "<a b='&c;'/>"}) {
    EXPECT_FALSE(IsFitToParse(document)) << document;
  }
  using std::string_view_literals::operator""sv;
  EXPECT_FALSE(IsFitToParse("<a>\0</a>"sv));
  EXPECT_FALSE(IsFitToParse("<?xml version='1.0'?><a>" + Wide("x", true) + "</a>"));
}

TEST(FitToParse, Utf16DocumentsAreCheckedLikeOthers) {
  for (const bool lowFirst : {true, false}) {
    const std::string mark = lowFirst ? "\xFF\xFE" : "\xFE\xFF";
    for (const std::string& start : {std::string(), mark}) {
      EXPECT_TRUE(IsFitToParse(start + Wide("<a b='c'>&amp;</a>", lowFirst)));
      EXPECT_FALSE(IsFitToParse(start + Wide("<a b='c'>&d;</a>", lowFirst)));
      EXPECT_FALSE(IsFitToParse(start + Wide("<a>", lowFirst)));
    }
    // Letters with a byte that is "<", "&" or a control character.
    const std::string letters = lowFirst ? "\x3C\x04\x26\x01\x01\x01" : "\x04\x3C\x01\x26\x01\x01";
    EXPECT_TRUE(IsFitToParse(mark + Wide("<a>", lowFirst) + letters + Wide("</a>", lowFirst)));
  }
}

struct Limit {
  std::string_view what;
  // Exactly what is allowed, and a little more.
  std::string most;
  std::string tooMuch;
};

class ParserLimits : public testing::TestWithParam<Limit> {};

TEST_P(ParserLimits, DocumentUpToEachLimitIsFitAndBeyondItIsNot) {
  const auto& [what, most, tooMuch] = GetParam();
  EXPECT_TRUE(IsFitToParse(most)) << what;
  EXPECT_FALSE(IsFitToParse(tooMuch)) << what;
}

std::string Document(std::size_t count, std::string_view parts) {
  return "<r>" + Times(count, parts) + "</r>";
}

std::string Attributes(std::size_t count) {
  return "<a" + Times(count, " b=''") + "/>";
}

std::string Levels(std::size_t count) {
  return Times(count, "<a>") + Times(count, "</a>");
}

// With nine attributes around it and one level.
std::string Interrupted(std::size_t count, std::string_view by) {
  return "<r" + Times(9, " b=''") + ">" + Times(count, by) + "</r>";
}

const Limit kLimits[] = {
    {"elements", Document(99'999, "<a></a>"), Document(100'000, "<a></a>")},
    {"empty elements", Document(99'999, "<a/>"), Document(100'000, "<a/>")},
    {"comments", Document(99'999, "<!---->"), Document(100'000, "<!---->")},
    {"instructions", Document(99'999, "<?a?>"), Document(100'000, "<?a?>")},
    {"sections", Document(99'999, "<![CDATA[]]>"), Document(100'000, "<![CDATA[]]>")},
    {"elements and texts", Document(49'999, "<a/>x"), Document(50'000, "<a/>x")},
    {"attributes of an element", Attributes(1'000), Attributes(1'001)},
    {"attributes of several elements", Document(1, Attributes(500) + Attributes(500)),
     Document(1, Attributes(500) + Attributes(501))},
    {"levels", Levels(256), Levels(257)},
    // The document's buffers of 300 bytes split it too.
    {"references", Interrupted(3'278'000, "&#9;"), Interrupted(3'290'000, "&#9;")},
    {"line ends", Interrupted(3'322'000, "\r"), Interrupted(3'323'000, "\r")},
    {"line ends in levels", Times(99, "<a>") + Times(830'000, "\r") + Times(99, "</a>"),
     Times(101, "<a>") + Times(830'000, "\r") + Times(101, "</a>")},
    {"what is no character in UTF-8", Document(1, Times(10'000, "\xEF\xBF\xBE")),
     Document(1, Times(10'001, "\xEF\xBF\xBF"))},
    {"surrogates in UTF-8", Document(1, Times(10'000, "\xED\xA0\x80")),
     Document(1, Times(10'001, "\xED\xBF\xBF"))},
};

INSTANTIATE_TEST_SUITE_P(Of, ParserLimits, testing::ValuesIn(kLimits));

TEST(ParserLimits, LimitsDoNotApplyToTexts) {
  for (const std::string_view text :
       {"a, = 1 b> xmlns |\n", "&lt;b c=\"\"&gt;\r\n", "V\xE4rk. ", "\xED\x95\x9C\xEA\xB5\xAD"}) {
    const std::string texts = Times(4'000'000 / text.size(), text);
    EXPECT_TRUE(IsFitToParse("<a>" + texts + "</a>")) << text;
    EXPECT_TRUE(IsFitToParse("<a><![CDATA[" + texts + "]]></a>")) << text;
  }
  EXPECT_TRUE(IsFitToParse("<a b='" + Times(300'000, "=, ") + "'/>"));
}

}  // namespace
}  // namespace parser_limits
