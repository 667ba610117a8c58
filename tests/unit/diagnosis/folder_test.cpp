// The exchange folder and what waits in it.
#include <gmock/gmock.h>
#include <tuple>

#include "diagnosis/core/exchange_files.h"
#include "exchange/request_kinds.h"
#include "unit/diagnosis/fixture.h"

namespace diagnosis_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

constexpr std::int64_t kDay = 24 * 60;

class FolderDiagnosis : public DiagnosisTest {
 protected:
  static std::u16string TestPath(bool withBlank) {
    return withBlank ? u"C:\\Kestra Dental\\" : u"C:\\Kestra\\";
  }
};

TEST_F(FolderDiagnosis, MissingFolderThatCanBeCreatedIsAWarning) {
  files.folders.erase(u"C:\\Kestra\\Vilnor");
  EXPECT_EQ(Problems(), Ids{"exchange-folder warning"});
  EXPECT_EQ(TextOf(u"unread-results"), "(no such line)");
}

TEST_F(FolderDiagnosis, MissingFolderThatTheUserMayNotCreateIsAFault) {
  files.folders.erase(u"C:\\Kestra\\Vilnor");
  computer.folder.mayAddFolders = false;
  EXPECT_EQ(Problems(), Ids{"exchange-folder fault"});
}

TEST_F(FolderDiagnosis, FolderWithoutAParentIsAFaultWithTheComponentsBox) {
  files.folders = {u"C:"};
  EXPECT_EQ(Problems(), Ids{"exchange-folder fault"});
  EXPECT_THAT(TextOf(u"exchange-folder"), HasSubstr("76 Path not found in GetVilnorOutputPath"));
}

TEST_F(FolderDiagnosis, FileInPlaceOfTheFolderIsAFault) {
  files.folders.erase(u"C:\\Kestra\\Vilnor");
  files.lengths[u"C:\\Kestra\\Vilnor"] = 1;
  EXPECT_EQ(Problems(), Ids{"exchange-folder fault"});
}

TEST_F(FolderDiagnosis, MissingRightsAreAFault) {
  computer.folder.mayAddFiles = false;
  EXPECT_EQ(Problems(), Ids{"exchange-rights fault"});
  computer.folder.mayAddFiles = true;
  computer.folder.mayRead = false;
  EXPECT_EQ(Problems(), Ids{"exchange-rights fault"});
}

TEST_F(FolderDiagnosis, BlanksAreAWarning) {
  registry.SetText(kMachine, Key(0), u"Path", TestPath(true));
  files.folders.insert(u"C:\\Kestra Dental\\Vilnor");
  EXPECT_EQ(Problems(), Ids{"exchange-blanks warning"});
}

TEST_F(FolderDiagnosis, NetworkDriveIsAWarning) {
  computer.folder.onNetwork = true;
  EXPECT_EQ(Problems(), Ids{"exchange-drive warning"});
}

TEST_F(FolderDiagnosis, TwinIsAWarning) {
  computer.folder.twin = u"C:\\Users\\anna\\AppData\\Local\\VirtualStore\\Kestra\\Vilnor";
  EXPECT_EQ(Problems(), Ids{"exchange-twin warning"});
}

TEST_F(FolderDiagnosis, FreshFilesAreOnTheirWay) {
  computer.entries = {{u"OutNewCase4711.xml", 5}, {u"InNewFHP77.xml", 600}, {u"SearchX.xml", 3}};
  EXPECT_EQ(Problems(), Ids{});
  EXPECT_EQ(TextOf(u"unread-results"), "Väntar: 1 nytt ärende (5 minuter).");
}

TEST_F(FolderDiagnosis, FilesAreOverdueAfterTheirUsualTime) {
  for (const auto& [name, minutes, problem] :
       {std::tuple(u"OutNewCase1.xml", 10, "unread-results warning"),
        std::tuple(u"InNewCase1.xml", 12 * 60, "left-requests warning"),
        std::tuple(u"SearchX.xml", 12 * 60, "left-requests warning"),
        std::tuple(u"InNewCase1.xml.tmp", 10, "left-requests warning")}) {
    computer.entries = {{name, minutes}};
    EXPECT_EQ(Problems(), Ids{});
    computer.entries = {{name, minutes + 1}};
    EXPECT_EQ(Problems(), Ids{problem});
  }
}

TEST_F(FolderDiagnosis, ResultsThatWereMovedAreAWarningAtOnce) {
  for (const char16_t* name :
       {u"OutNewCase1 2026-11-16 14.05.00.xml", u"DoneNewCase1 2026-11-16 14.05.00.xml"}) {
    computer.entries = {{name, 0}};
    EXPECT_EQ(Problems(), Ids{"unread-results warning"});
  }
}

TEST_F(FolderDiagnosis, UnreadResultsAreCountedByKindAndAge) {
  computer.entries = {{u"OutNewCase4711.xml", 90},
                      {u"OutNewCase4712.xml", 3 * kDay},
                      {u"OutNewFHP77 2026-11-16 14.05.00.xml", kDay},
                      {u"DoneExistCase101 2026-11-16 14.05.00.xml", 1},
                      {u"notes.txt", 9000},
                      {u"OutOther.xml", 9000}};
  EXPECT_EQ(Problems(), Ids{"unread-results warning"});
  EXPECT_EQ(TextOf(u"unread-results"),
            "Resultat som inte är lästa: 2 nya ärenden (äldst: 3 dagar), 1 förhandsprövning "
            "(undanlagt, 1 dag), 1 öppnat ärende (redan infört, 1 minut).");
}

TEST_F(FolderDiagnosis, RequestsLeftBehindAreCountedByKindAndAge) {
  computer.entries = {{u"InExistCase101.xml", 2 * kDay},
                      {u"Search197103151234.xml", kDay},
                      {u"InNewCase1.xml.tmp", 60}};
  EXPECT_EQ(Problems(), Ids{"left-requests warning"});
  EXPECT_EQ(TextOf(u"left-requests"),
            "Begäranden som ligger kvar: 1 öppnat ärende (2 dagar), 1 sökning (1 dag), 1 påbörjad "
            "begäran (1 timme).");
}

TEST_F(FolderDiagnosis, ReportHasNoNumberAndNoNameOfAFile) {
  computer.entries = {{u"OutNewCase19710315123.xml", 3 * kDay},
                      {u"Search197103151234.xml", 3 * kDay},
                      {u"InNewCase19710315123.xml.tmp", 3 * kDay},
                      {u"Anna Öberg.xml", 3 * kDay}};
  const diagnosis::Report report{u"1.5.1.0", u"2026-11-16 14:05", Diagnose()};
  for (const std::u16string& text : {AsText(report), AsJson(report)}) {
    EXPECT_THAT(automation::ToUtf8(text), AllOf(Not(HasSubstr("1971")), Not(HasSubstr("Anna"))));
  }
}

TEST(ExchangeFileKinds, EveryKindOfRequestIsListed) {
  for (std::int32_t message = 0; message < 20000; ++message) {
    const auto kind = exchange::KindOf(message);
    EXPECT_EQ(kind.has_value(),
              kind && std::find(exchange::kRequestKinds.begin(), exchange::kRequestKinds.end(),
                                *kind) != exchange::kRequestKinds.end());
  }
}

TEST(ExchangeFileKinds, LetterCaseOfNamesIsIgnoredAsInWindows) {
  const auto file = diagnosis::ExchangeFileOf(u"OUTNEWCASE1.XML");
  ASSERT_TRUE(file);
  EXPECT_EQ(file->kind, diagnosis::FileKind::Result);
}

}  // namespace
}  // namespace diagnosis_test
