// The report's forms, the command line, and the document about both.
#include <fstream>
#include <gmock/gmock.h>
#include <sstream>

#include "diagnosis/core/checks.h"
#include "diagnosis/core/options.h"
#include "diagnosis/core/trust.h"
#include "unit/diagnosis/fixture.h"

namespace diagnosis_test {
namespace {

using diagnosis::Options;
using testing::HasSubstr;

const Findings kFindings = {{diagnosis::checks::kWindows, State::Fine, u"Windows 10", {}},
                            {diagnosis::checks::kAdo, State::Warning, u"varnar\r\nmer", u"gör så"},
                            {diagnosis::checks::kMsxml, State::Fault, u"\"C:\\x\"", u"gör så här"}};

std::string DocumentText() {
  std::ifstream file(VILNOR_SOURCE_DIR "/docs/vilnorcheck.md");
  std::stringstream text;
  text << file.rdbuf();
  return text.str();
}

TEST(Report, TextHasTheWorstFirstAndEachFindingOnItsOwnLines) {
  EXPECT_EQ(diagnosis::AsText({u"1.5.1.0", u"2026-11-16 14:05", kFindings}),
            u"VilnorCheck 1.5.1.0, 2026-11-16 14:05\r\n"
            u"1 fel, 1 varning\r\n\r\n"
            u"FEL      MSXML: \"C:\\x\"\r\n         Åtgärd: gör så här\r\n"
            u"Varning  ADO: varnar  mer\r\n         Åtgärd: gör så\r\n"
            u"OK       Windows: Windows 10\r\n");
}

TEST(Report, JsonHasTheWorstStateAndEscapesTexts) {
  EXPECT_EQ(diagnosis::AsJson({u"1.5.1.0", u"2026-11-16 14:05", {kFindings[1], kFindings[2]}}),
            u"{\"program\": \"VilnorCheck\", \"version\": \"1.5.1.0\", \"time\": \"2026-11-16 "
            u"14:05\",\r\n \"state\": \"fault\",\r\n \"findings\": [\r\n"
            u"    {\"id\": \"ado\", \"title\": \"ADO\", \"state\": \"warning\",\r\n"
            u"     \"text\": \"varnar\\u000d\\u000amer\",\r\n     \"advice\": \"gör så\"},\r\n"
            u"    {\"id\": \"msxml\", \"title\": \"MSXML\", \"state\": \"fault\",\r\n"
            u"     \"text\": \"\\\"C:\\\\x\\\"\",\r\n     \"advice\": \"gör så här\"}\r\n ]}\r\n");
}

TEST(Report, SummaryCountsFaultsAndWarnings) {
  EXPECT_EQ(diagnosis::Summary({kFindings[0]}), u"Inget fel hittades.");
  EXPECT_EQ(diagnosis::Summary({kFindings[1], kFindings[1]}), u"2 varningar");
  EXPECT_EQ(diagnosis::Summary({kFindings[2]}), u"1 fel");
}

TEST(Report, ExitCodeIsThatOfTheWorstFinding) {
  EXPECT_EQ(diagnosis::ExitCodeOf(diagnosis::Worst({kFindings[0]})), 0);
  EXPECT_EQ(diagnosis::ExitCodeOf(diagnosis::Worst({kFindings[1], kFindings[0]})), 1);
  EXPECT_EQ(diagnosis::ExitCodeOf(diagnosis::Worst(kFindings)), 2);
}

TEST(CommandLine, OptionsAreReadInAnyLetterCase) {
  EXPECT_EQ(diagnosis::ReadOptions({}).output, Options::Output::Window);
  EXPECT_EQ(diagnosis::ReadOptions({u"/JSON"}).output, Options::Output::Json);
  EXPECT_EQ(diagnosis::ReadOptions({u"-text"}).output, Options::Output::Text);
  EXPECT_EQ(diagnosis::ReadOptions({u"/?"}).output, Options::Output::Help);
  const Options both = diagnosis::ReadOptions({u"/databas", u"/json"});
  EXPECT_TRUE(both.database);
  EXPECT_EQ(both.output, Options::Output::Json);
  // The window has a button of its own.
  EXPECT_EQ(diagnosis::ReadOptions({u"/databas"}).output, Options::Output::Text);
}

TEST(CommandLine, UnknownWordIsRefused) {
  EXPECT_TRUE(diagnosis::ReadOptions({u"/json", u"json"}).wrong);
  EXPECT_TRUE(diagnosis::ReadOptions({u"/jsn"}).wrong);
  EXPECT_FALSE(diagnosis::ReadOptions({u"/json"}).wrong);
}

TEST(SignatureStates, EachAnswerOfTheSystemHasItsState) {
  using diagnosis::Signature;
  using diagnosis::SignatureOf;
  EXPECT_EQ(SignatureOf(0), Signature::Good);
  EXPECT_EQ(SignatureOf(static_cast<std::int32_t>(0x800B0100)), Signature::None);
  EXPECT_EQ(SignatureOf(static_cast<std::int32_t>(0x80096010)), Signature::Broken);
  EXPECT_EQ(SignatureOf(static_cast<std::int32_t>(0x800B0109)), Signature::Untrusted);
}

TEST(SupportDocument, NamesEveryLineAndEveryOption) {
  const std::string document = DocumentText();
  for (const auto& check : diagnosis::checks::kAll) {
    const std::string row =
        "| `" + automation::ToUtf8(check.id) + "` | " + automation::ToUtf8(check.title) + " |";
    EXPECT_THAT(document, HasSubstr(row));
  }
  for (const char* option : {"/text", "/json", "/databas"}) {
    EXPECT_THAT(document, HasSubstr(option));
  }
}

}  // namespace
}  // namespace diagnosis_test
