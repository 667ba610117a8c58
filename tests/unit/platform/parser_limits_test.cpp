// What no parser is given.
#include "platform/parser_limits.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>

namespace platform {
namespace {

std::string Times(std::size_t count, std::string_view text) {
  std::string times;
  for (; count > 0; --count) {
    times += text;
  }
  return times;
}

// As UTF-16, low bytes first.
std::string Wide(std::string_view text) {
  std::string wide;
  for (const char character : text) {
    wide += {character, '\0'};
  }
  return wide;
}

struct Limit {
  std::string_view what;
  // Just what is allowed, and a little more.
  std::string most;
  std::string tooMuch;
};

class ParserLimits : public testing::TestWithParam<Limit> {};

TEST_P(ParserLimits, AllowWhatAResultCouldHaveAndNoMore) {
  const auto& [what, most, tooMuch] = GetParam();
  EXPECT_FALSE(IsTooMuchToParse(most)) << what;
  EXPECT_TRUE(IsTooMuchToParse(tooMuch)) << what;
  EXPECT_FALSE(IsTooMuchToParse(Wide(most))) << what;
  EXPECT_TRUE(IsTooMuchToParse(Wide(tooMuch))) << what;
}

std::string Attributes(std::size_t count) {
  return "<a" + Times(count, " b =\r\n\t'>'") + "/>";
}

std::string Namespaces(std::size_t count) {
  return "<a " + Times(count, "xmlns:b=\"\" ") + ">";
}

const Limit kLimits[] = {
    {"tags", Times(100'000, "<a>"), Times(100'001, "<a>")},
    {"tags with attributes", Times(33'333, "<a b=\"\" c=''/>"), Times(33'334, "<a b=\"\" c=''/>")},
    {"attributes of an element", Attributes(10'000), Attributes(10'001)},
    {"attributes of several elements", Times(4, Attributes(5'000)), Times(5, Attributes(5'000))},
    {"attributes of an element within others", "<r>" + Attributes(10'000) + "</r>",
     "<r>" + Attributes(10'001) + "</r>"},
    {"tags within namespaces", Namespaces(1'000) + Times(97'999, "<b/>"),
     Namespaces(1'000) + Times(98'000, "<b/>")},
    {"attributes within namespaces", Namespaces(1'000) + Times(48'975, "<b c=''/>"),
     Namespaces(1'000) + Times(48'976, "<b c=''/>")},
    {"a document type", "<!-- DOCTYPE -->", "<!DOCTYPE a>"},
    {"zero bytes from some place on", Attributes(10'000), "<?xml?>" + Wide(Attributes(10'001))},
};

INSTANTIATE_TEST_SUITE_P(Of, ParserLimits, testing::ValuesIn(kLimits));

TEST(ParserLimits, LeaveTextsAlone) {
  EXPECT_FALSE(IsTooMuchToParse(""));
  EXPECT_FALSE(IsTooMuchToParse("no document"));
  EXPECT_FALSE(IsTooMuchToParse("<a>" + Times(300'000, "a, = 1 &amp; b> xmlns |") + "</a>"));
  EXPECT_FALSE(IsTooMuchToParse("<![CDATA[" + Times(300'000, "=, ") + "]]>"));
  EXPECT_FALSE(IsTooMuchToParse("<!--" + Times(300'000, "=, ") + "-->"));
  EXPECT_FALSE(IsTooMuchToParse("<a b='" + Times(300'000, "=, ") + "'/>"));
  EXPECT_FALSE(IsTooMuchToParse("<a b=" + Times(300'000, " ")));
  // As a page of the web would stand in it.
  EXPECT_FALSE(IsTooMuchToParse("<a>" + Times(300'000, "&lt;b c=\"\"&gt;") + "</a>"));
}

}  // namespace
}  // namespace platform
