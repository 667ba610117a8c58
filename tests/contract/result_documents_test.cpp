// What the component relies on when it reads a result file, with any parser.
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "contract/adapters.h"
#include "contract/temporary_folder.h"
#include "fakes/printing.h"
#include "parser_limits/parser_limits.h"
#include "platform/files.h"
#include "platform/result_document.h"

namespace contract {
namespace {

using automation::Value;
using fakes::ErrorNumberOf;

// "<r><a>Åsa</a></r>" with a declaration, in units of so many bytes.
struct Encoding {
  std::string name;
  std::string mark;
  std::string letter;
  std::size_t width = 1;
  bool bigEndian = false;

  std::string Bytes(const std::string& declared) const {
    const std::string declaration =
        declared.empty() ? "" : "<?xml version='1.0' encoding='" + declared + "'?>";
    return Wide(declaration + "<r><a>") + letter + Wide("sa</a></r>");
  }

 private:
  std::string Wide(const std::string& ascii) const {
    std::string bytes;
    for (const char character : ascii) {
      const std::string zeros(width - 1, '\0');
      bytes += bigEndian ? zeros + character : character + zeros;
    }
    return bytes;
  }
};

const std::vector<Encoding> kEncodings = {
    {.name = "UTF-8", .mark = "", .letter = "\xC3\x85"},
    {.name = "ISO-8859-1", .mark = "", .letter = "\xC5"},
    {.name = "US-ASCII", .mark = "", .letter = "\x8F"},
    {.name = "UTF-16", .mark = "\xFF\xFE", .letter = std::string("\xC5\0", 2), .width = 2},
    {.name = "UTF-16BE",
     .mark = "\xFE\xFF",
     .letter = std::string("\0\xC5", 2),
     .width = 2,
     .bigEndian = true},
    {.name = "UTF-32",
     .mark = std::string("\xFF\xFE\0\0", 4),
     .letter = std::string("\xC5\0\0\0", 4),
     .width = 4}};

const std::vector<std::string> kDeclarations = {
    "",       "UTF-8", "ISO-8859-1", "windows-1252", "US-ASCII", "UTF-16",   "UTF-16BE",
    "UTF-32", "UTF-7", "EBCDIC-US",  "Shift_JIS",    "none",     "../../etc"};

class ResultDocuments : public testing::Test {
 protected:
  std::unique_ptr<platform::ResultDocument> Load(const std::string& bytes) {
    folder_.Write("Out Åsa.xml", bytes);
    auto document = documents_->New();
    document->Load(folder_ / "Out Åsa.xml");
    return document;
  }
  // The document's first element `a`.
  Value FirstOf(const std::string& bytes) { return Load(bytes)->FirstValue(u"a"); }

  TemporaryFolder folder_;
  std::unique_ptr<platform::ResultDocuments> documents_ = NewResultDocuments();
};

TEST_F(ResultDocuments, ElementTextIsReadAsText) {
  auto document =
      Load("<?xml version='1.0' encoding='ISO-8859-1'?><r><a>4711</a><b>\xC5sa</b></r>");
  EXPECT_EQ(document->GetParseError().code, 0);
  EXPECT_EQ(document->FirstValue(u"a"), Value(u"4711"));
  EXPECT_EQ(document->FirstValue(u"b"), Value(u"Åsa"));
}

TEST_F(ResultDocuments, RefusalHasItsCause) {
  const auto refusalOf = [&](const std::string& bytes) {
    return Load(bytes)->GetParseError().refusal;
  };
  EXPECT_EQ(refusalOf(""), platform::Reason::EmptyFile);
  EXPECT_EQ(refusalOf("<r><a>1</b></r>"), platform::Reason::Malformed);
  EXPECT_EQ(refusalOf("<r><a>1</a>"), platform::Reason::NotFit);
  auto document = documents_->New();
  document->Load(folder_ / "none.xml");
  EXPECT_EQ(document->GetParseError().refusal, platform::Reason::NotFound);
}

TEST_F(ResultDocuments, FirstElementInDocumentOrderIsFoundAtAnyDepth) {
  EXPECT_EQ(FirstOf("<r><x><y><a>1</a></y></x><a>2</a></r>"), Value(u"1"));
  EXPECT_EQ(FirstOf("<a>1<a>2</a></a>"), Value(u"12"));
}

TEST_F(ResultDocuments, MissingElementRaisesObjectNotSet) {
  auto document = Load("<r><A>1</A></r>");
  EXPECT_EQ(ErrorNumberOf([&] { document->FirstValue(u"a"); }), 91);
}

TEST_F(ResultDocuments, EmptyElementHasEmptyText) {
  EXPECT_EQ(FirstOf("<r><a/></r>"), Value(u""));
  EXPECT_EQ(FirstOf("<r><a></a></r>"), Value(u""));
}

TEST_F(ResultDocuments, CharacterReferencesCDataSectionsAndUtf8AreRead) {
  EXPECT_EQ(FirstOf("<r><a>1&amp;2&#38;3&#x20AC;</a></r>"), Value(u"1&2&3€"));
  EXPECT_EQ(FirstOf("<r><a><![CDATA[<&>]]></a></r>"), Value(u"<&>"));
  EXPECT_EQ(FirstOf("<r><a>\xC3\x96</a></r>"), Value(u"Ö"));
  EXPECT_EQ(FirstOf("\xEF\xBB\xBF<r><a>\xC3\x96</a></r>"), Value(u"Ö"));
}

TEST_F(ResultDocuments, LettersAreReadInEveryEncoding) {
  const auto document = [](const std::string& encoding, const std::string& text) {
    return "<?xml version='1.0' encoding='" + encoding + "'?><r><a>" + text + "</a></r>";
  };
  EXPECT_EQ(FirstOf(document("ISO-8859-1", "\xC5sa \xD6rn \xE9\xFF")), Value(u"Åsa Örn éÿ"));
  EXPECT_EQ(FirstOf(document("UTF-8", "\xC3\x85sa \xE2\x82\xAC \xF0\x9F\x98\x80")),
            Value(u"Åsa € \U0001F600"));
  EXPECT_EQ(FirstOf(document("windows-1252", "\xC5sa \x80\x96")), Value(u"Åsa €–"));
  for (const bool lowFirst : {true, false}) {
    std::string wide;
    for (const char16_t unit :
         std::u16string(u"\uFEFF<?xml version='1.0' encoding='UTF-16'?><r><a>Åsa €</a></r>")) {
      const char low = static_cast<char>(unit & 0xFF);
      const char high = static_cast<char>(unit >> 8);
      wide += lowFirst ? std::string{low, high} : std::string{high, low};
    }
    EXPECT_EQ(FirstOf(wide), Value(u"Åsa €"));
  }
}

// The same document in each encoding, under each declaration and with each byte order mark. It is
// refused or its element has some text. Where declaration, mark and bytes agree, the text is right.
TEST_F(ResultDocuments, WronglyDeclaredEncodingIsHarmless) {
  int right = 0;
  for (const auto& encoding : kEncodings) {
    for (const auto& declared : kDeclarations) {
      for (const auto& mark : {std::string(), encoding.mark, std::string("\xEF\xBB\xBF"),
                               std::string("\xFF\xFE"), std::string("\xFE\xFF")}) {
        SCOPED_TRACE(encoding.name + " declared as " + declared);
        const auto document = Load(mark + encoding.Bytes(declared));
        if (document->GetParseError().code != 0) {
          EXPECT_EQ(ErrorNumberOf([&] { document->FirstValue(u"a"); }), 91);
          continue;
        }
        const Value value = document->FirstValue(u"a");
        if (declared == encoding.name && mark == encoding.mark) {
          EXPECT_EQ(value, Value(u"Åsa"));
          ++right;
        }
      }
    }
  }
  EXPECT_GE(right, 3);
}

TEST_F(ResultDocuments, MissingFileIsReported) {
  auto document = documents_->New();
  document->Load(folder_ / "nowhere.xml");
  EXPECT_NE(document->GetParseError().code, 0);
  EXPECT_EQ(ErrorNumberOf([&] { document->FirstValue(u"a"); }), 91);
}

TEST_F(ResultDocuments, MalformedFileIsReported) {
  for (const char* bytes :
       {"", " ", "text", "<r>", "<r></s>", "<r><a>1</a></r><r/>", "<r a=1/>", "<r>&none;</r>",
        "<?xml version='1.0' encoding='UTF-8'?><r>\xE5</r>", "<r>\x01</r>"}) {
    EXPECT_NE(Load(bytes)->GetParseError().code, 0) << bytes;
  }
}

TEST_F(ResultDocuments, FailedLoadDiscardsTheEarlierDocument) {
  auto document = Load("<r><a>1</a></r>");
  folder_.Write("bad.xml", "<r>");
  document->Load(folder_ / "bad.xml");
  EXPECT_NE(document->GetParseError().code, 0);
  EXPECT_EQ(ErrorNumberOf([&] { document->FirstValue(u"a"); }), 91);
}

// The external document types would break the document if they were read.
TEST_F(ResultDocuments, DocumentTypeIsAcceptedAndFetchesNothing) {
  folder_.Write("broken.dtd", "<!ELEMENT broken");
  folder_.Write("empty.dtd", "<!ELEMENT r EMPTY>");
  const std::string folder = folder_.path().generic_string();
  for (const std::string& type : {std::string("<!DOCTYPE r>"), std::string("<!DOCTYPE Envelope>"),
                                  std::string("<!DOCTYPE r SYSTEM 'broken.dtd'>"),
                                  std::string("<!DOCTYPE r PUBLIC '-//r' 'broken.dtd'>"),
                                  std::string("<!DOCTYPE r SYSTEM 'empty.dtd'>"),
                                  std::string("<!DOCTYPE r SYSTEM 'none.dtd'>"),
                                  "<!DOCTYPE r SYSTEM '" + folder + "/broken.dtd'>",
                                  "<!DOCTYPE r SYSTEM 'file:///" + folder + "/broken.dtd'>",
                                  "<!DOCTYPE r SYSTEM 'file:///Z:" + folder + "/broken.dtd'>",
                                  std::string("<!DOCTYPE r SYSTEM 'http://127.0.0.1:9/r.dtd'>")}) {
    const auto document =
        Load("<?xml version='1.0' encoding='ISO-8859-1'?>" + type + "<r><a>\xC5</a></r>");
    ASSERT_EQ(document->GetParseError().code, 0) << type;
    EXPECT_EQ(document->FirstValue(u"a"), Value(u"Å")) << type;
  }
}

// Wine's parser never returns from the last of them.
TEST_F(ResultDocuments, DocumentTypeWithDeclarationsIsRefused) {
  folder_.Write("secret.txt", "SECRET");
  std::string entities = "<!ENTITY % e0 ' '>";
  for (int level = 1; level <= 4; ++level) {
    entities += "<!ENTITY % e" + std::to_string(level) + " '";
    for (int i = 0; i < 10; ++i) {
      entities += "&#37;e" + std::to_string(level - 1) + ";";
    }
    entities += "'>";
  }
  for (const std::string& type :
       {std::string("<!DOCTYPE r [<!ELEMENT r (a)><!ELEMENT a (#PCDATA)>]>"),
        std::string("<!DOCTYPE r [<!ENTITY e SYSTEM 'secret.txt'>]>"),
        "<!DOCTYPE r [" + entities + "%e4;]>"}) {
    const auto document = Load(type + "<r><a>1</a></r>");
    EXPECT_NE(document->GetParseError().code, 0) << type;
    EXPECT_EQ(ErrorNumberOf([&] { document->FirstValue(u"a"); }), 91) << type;
  }
}

TEST_F(ResultDocuments, EndlessNestingIsRefused) {
  constexpr int levels = 100000;
  std::string nested;
  for (int level = 0; level < levels; ++level) {
    nested += "<a>";
  }
  for (int level = 0; level < levels; ++level) {
    nested += "</a>";
  }
  EXPECT_NE(Load(nested)->GetParseError().code, 0);
}

// tests/unit/parser_limits/parser_limits_test.cpp tests the limits themselves.

// Parsers compare each attribute of an element with all others: a hundred thousand take minutes.
TEST_F(ResultDocuments, ElementWithEndlessAttributesIsRefused) {
  const auto withAttributes = [](int count) {
    std::string bytes = "<r><a";
    for (int i = 0; i < count; ++i) {
      bytes += " b" + std::to_string(i) + "='>'";
    }
    return bytes + ">1</a></r>";
  };
  EXPECT_EQ(FirstOf(withAttributes(1000)), Value(u"1"));
  const auto document = Load(withAttributes(100'000));
  EXPECT_NE(document->GetParseError().code, 0);
  EXPECT_EQ(ErrorNumberOf([&] { document->FirstValue(u"a"); }), 91);
}

TEST_F(ResultDocuments, EndlessElementsAreRefused) {
  const auto withElements = [](int count) {
    std::string bytes = "<r><a>1</a>";
    for (int i = 0; i < count; ++i) {
      bytes += "<b/>";
    }
    return bytes + "</r>";
  };
  EXPECT_EQ(FirstOf(withElements(99'000)), Value(u"1"));
  EXPECT_NE(Load(withElements(100'000))->GetParseError().code, 0);
}

TEST_F(ResultDocuments, FileOfMoreThan64MegabytesIsRefusedUnread) {
  const std::string end = "</b></r>";
  std::string letters;
  while (letters.size() < 1'000'000) {
    letters += "\xC3\x85";
  }
  std::string bytes = "<?xml version='1.0' encoding='UTF-8'?><r><a>1</a><b>";
  while (bytes.size() < parser_limits::kLargestDocument - 2'000'000) {
    bytes += letters + "</b><b>";
  }
  bytes.resize(parser_limits::kLargestDocument - end.size(), 'x');
  EXPECT_EQ(FirstOf(bytes + end), Value(u"1"));
  const platform::ParseError error = Load(bytes + "x" + end)->GetParseError();
  EXPECT_NE(error.code, 0);
  EXPECT_EQ(error.refusal, platform::Reason::TooLarge);
}

TEST_F(ResultDocuments, TooLongValueRaisesOutOfMemory) {
  const auto withValue = [](const std::string& value) { return "<r><a>" + value + "</a></r>"; };
  const auto errorOf = [&](const std::string& value) {
    return ErrorNumberOf([&] { FirstOf(withValue(value)); });
  };
  const std::string longest(parser_limits::kLongestValue, 'x');
  EXPECT_EQ(FirstOf(withValue(longest)), Value(std::u16string(longest.begin(), longest.end())));
  EXPECT_EQ(errorOf(longest + "x"), 7);
  EXPECT_EQ(errorOf(longest + "<b>x</b>"), 7);
  EXPECT_EQ(errorOf(longest + "<![CDATA[x]]>"), 7);
}

TEST_F(ResultDocuments, ValueOfTooManyPiecesRaisesOutOfMemory) {
  const auto withElements = [](std::size_t count) {
    std::string bytes = "<r><a>";
    for (std::size_t i = 0; i < count; ++i) {
      bytes += i % 2 == 0 ? "<b>" : "</b><b/>";
    }
    return bytes + (count % 2 == 0 ? "" : "</b>") + "</a><c>2</c></r>";
  };
  EXPECT_EQ(FirstOf(withElements(parser_limits::kMostPieces)), Value(u""));
  const auto document = Load(withElements(parser_limits::kMostPieces + 1));
  EXPECT_EQ(ErrorNumberOf([&] { document->FirstValue(u"a"); }), 7);
  EXPECT_EQ(document->FirstValue(u"c"), Value(u"2"));
}

TEST_F(ResultDocuments, LoadedFileIsNotHeldOpen) {
  auto document = Load("<r><a>1</a></r>");
  EXPECT_EQ(ErrorNumberOf([&] { NewFiles()->DeleteFile(folder_ / "Out Åsa.xml"); }), 0);
}

}  // namespace
}  // namespace contract
