#include "simulator/core/command_line.h"

#include <gmock/gmock.h>

#include "automation/text.h"

namespace {

using simulator::ParseCommandLine;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr auto kProgram = u"C:\\Link\\Link.exe";
constexpr auto kTail =
    u" path=\"C:\\Kestra\\Vilnor\\InNewCase4711.xml\" version=2 "
    u"caller=KestraDental removefiles=1";

void ExpectComponentsRequest(const simulator::CommandLine& parsed) {
  EXPECT_EQ(parsed.requestPath, u"C:\\Kestra\\Vilnor\\InNewCase4711.xml");
  EXPECT_EQ(parsed.version, u"2");
  EXPECT_EQ(parsed.caller, u"KestraDental");
  EXPECT_TRUE(parsed.removeFiles);
  EXPECT_FALSE(parsed.help);
  EXPECT_THAT(parsed.problems, IsEmpty());
}

struct ProgramSpelling {
  const char16_t* written;
  const char16_t* running;
};

class ProgramPath : public testing::TestWithParam<ProgramSpelling> {};

TEST_P(ProgramPath, LeadingProgramPathIsSkippedInEverySpelling) {
  ExpectComponentsRequest(
      ParseCommandLine(GetParam().written + std::u16string(kTail), GetParam().running));
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, ProgramPath,
    testing::Values(ProgramSpelling{u"C:\\Link\\Link.exe", kProgram},
                    ProgramSpelling{u"\"C:\\Link\\Link.exe\"", kProgram},
                    ProgramSpelling{u"C:\\Program Files\\Vilnor Link\\Link.exe",
                                    u"C:\\Program Files\\Vilnor Link\\Link.exe"},
                    ProgramSpelling{u"c:\\program files\\vilnor link\\LINK.EXE",
                                    u"C:\\Program Files\\Vilnor Link\\Link.exe"},
                    ProgramSpelling{u"\"C:\\Program Files\\Vilnor Link\\Link.exe\"",
                                    u"C:\\Program Files\\Vilnor Link\\Link.exe"},
                    ProgramSpelling{u"C:\\PROGRA~1\\Link\\Link.exe",
                                    u"C:\\Program Files\\Link\\Link.exe"},
                    ProgramSpelling{u"..\\My Link\\Link.exe", u"C:\\My Link\\Link.exe"},
                    ProgramSpelling{u"Link", kProgram},
                    ProgramSpelling{u"C:\\a=b\\Link.exe", u"C:\\a=b\\Link.exe"}));

TEST(CommandLine, RequestPathKeepsBlanksAndSwedishLetters) {
  const auto parsed = ParseCommandLine(
      u"C:\\Link\\Link.exe path=\"C:\\Tandläkare Åsa Öberg\\Vilnor\\InNewCase1.xml\" version=2",
      kProgram);
  EXPECT_EQ(parsed.requestPath, u"C:\\Tandläkare Åsa Öberg\\Vilnor\\InNewCase1.xml");
  EXPECT_THAT(parsed.problems, IsEmpty());
}

TEST(CommandLine, EmptyCommandLineHasNoRequest) {
  for (const auto* const line : {u"C:\\Link\\Link.exe", u"\"C:\\Link\\Link.exe\" ", u"Link", u""}) {
    const auto parsed = ParseCommandLine(line, kProgram);
    EXPECT_THAT(parsed.requestPath, IsEmpty());
    EXPECT_THAT(parsed.problems, IsEmpty());
    EXPECT_FALSE(parsed.removeFiles);
  }
}

TEST(CommandLine, KeysAreReadInAnyOrderAndLetterCase) {
  const auto parsed = ParseCommandLine(
      u"Link.exe  RemoveFiles=1\tVERSION=2   Path=\"C:\\x.xml\"caller=\"Kestra Dental\"", kProgram);
  EXPECT_EQ(parsed.requestPath, u"C:\\x.xml");
  EXPECT_EQ(parsed.caller, u"Kestra Dental");
  EXPECT_TRUE(parsed.removeFiles);
  EXPECT_THAT(parsed.problems, IsEmpty());
}

TEST(CommandLine, PathWithoutBlanksNeedsNoQuotes) {
  const auto parsed = ParseCommandLine(u"Link.exe path=C:\\x\\y.xml removefiles=0", kProgram);
  EXPECT_EQ(parsed.requestPath, u"C:\\x\\y.xml");
  EXPECT_FALSE(parsed.removeFiles);
  EXPECT_THAT(parsed.problems, IsEmpty());
}

TEST(CommandLine, HelpIsRecognised) {
  for (const auto* const word : {u"/?", u"-h", u"--help", u"/H"}) {
    const auto parsed = ParseCommandLine(u"Link.exe " + std::u16string(word), kProgram);
    EXPECT_TRUE(parsed.help);
    EXPECT_THAT(parsed.problems, IsEmpty());
  }
}

struct BadLine {
  const char16_t* arguments;
  const char* problemNames;
};

class BadCommandLine : public testing::TestWithParam<BadLine> {};

TEST_P(BadCommandLine, BadCommandLineGivesItsOwnErrorText) {
  const auto parsed =
      ParseCommandLine(u"Link.exe " + std::u16string(GetParam().arguments), kProgram);
  ASSERT_THAT(parsed.problems, SizeIs(1));
  EXPECT_THAT(automation::ToUtf8(parsed.problems[0]), HasSubstr(GetParam().problemNames));
}

INSTANTIATE_TEST_SUITE_P(
    CommandLine, BadCommandLine,
    testing::Values(BadLine{u"path=C:\\My Folder\\x.xml version=2", "Folder\\x.xml"},
                    BadLine{u"path=\"C:\\x.xml version=2", "Citattecknet"},
                    BadLine{u"path=\"C:\\x.xml\" version=3", "version=3"},
                    BadLine{u"path=\"C:\\x.xml\" removefiles=yes", "removefiles=yes"},
                    BadLine{u"path=\"C:\\x.xml\" colour=red", "colour"},
                    BadLine{u"path=\"\" version=2", "path="},
                    BadLine{u"version=2 caller=KestraDental removefiles=1", "path="},
                    BadLine{u"C:\\x.xml", "C:\\x.xml"}));

}  // namespace
