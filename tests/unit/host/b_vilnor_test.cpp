#include "host/b_vilnor.h"

#include <functional>

#include "db/connection_state.h"
#include "unit/fhp/fixture.h"
#include "unit/host/host_fixture.h"
#include "util/error_trap.h"

namespace host {
namespace {

using Texts = std::vector<std::u16string>;
using platform::Icon;

const automation::AutomationError kServerGone{-2147467259, u"", u"server closed the connection"};

TEST_F(BVilnorTest, InitVilnorStoresTheSessionForEveryObject) {
  locale.UseSwedish();
  util::CurrentSettings() = {};
  BVilnor second(events);
  vilnor.InitVilnor(u"Driver=A", 1, 2);
  second.InitVilnor(u"Driver=B", 4, 1);
  const auto& session = util::CurrentSettings();
  EXPECT_EQ(session.gConnectionParameter, u"Driver=B");
  EXPECT_EQ(session.gKestraLangID, 4);
  EXPECT_EQ(session.gDbType, 1);
  EXPECT_EQ(session.gDateFormat, u"yyyy-MM-dd");
  EXPECT_TRUE(database.Log().empty());
}

TEST_F(BVilnorTest, InitVilnorTakesTheDateFormatFromTheLanguageItIsGiven) {
  locale.shortDateAnswer = u"";
  util::CurrentSettings() = {};
  vilnor.InitVilnor(u"", 4, 1);
  EXPECT_EQ(util::CurrentSettings().gDateFormat, u"DD/MM/YYYY");
}

TEST_F(BVilnorTest, OpenWithNewCaseWritesTheRequestAndStartsTheProgramOnIt) {
  vilnor.OpenWithNewCase(4711, 12, 3);
  EXPECT_EQ(processes.started, Started(u"InNewCase4711.xml"));
  const std::string file = Contents(u"InNewCase4711.xml");
  EXPECT_NE(file.find("<Title>(19850312-1234)</Title><PatientFirstName>\xC5sa-M\xE4rta"
                      "</PatientFirstName><PatientLastName>\xD6"
                      "berg</PatientLastName><PatientId>19850312-1234</PatientId>"),
            std::string::npos);
  EXPECT_TRUE(dialogs.shown.empty());
  EXPECT_EQ(database.AliveConnections(), 0);
  EXPECT_EQ(database.AliveRecordsets(), 0);
}

// Records how many recordsets and connections exist when the program is started.
class WatchedProcesses : public platform::Processes {
 public:
  explicit WatchedProcesses(const fakes::Database& database) : database_(database) {}
  void Start(const std::u16string& /*commandLine*/) override {
    left.push_back(database_.AliveRecordsets() + database_.AliveConnections());
  }
  std::vector<int> left;

 private:
  const fakes::Database& database_;
};

TEST_F(BVilnorTest, DatabaseIsReleasedWhenTheProgramStarts) {
  WatchedProcesses watched(database);
  platform::Platform watchedPorts = fakes::With(ports, watched);
  platform::Use(watchedPorts);
  vilnor.OpenWithNewCase(4711, 12, 3);
  vilnor.OpenSearchPatient(4711);
  vilnor.OpenExistCase(7);
  vilnor.OpenExistFHP(8);
  platform::Use(ports);
  EXPECT_EQ(watched.left, (std::vector<int>{0, 0, 0, 0}));
}

TEST_F(BVilnorTest, OpenSearchPatientWritesTheSearchOfThePatientsNumber) {
  vilnor.OpenSearchPatient(4711);
  EXPECT_EQ(processes.started, Started(u"Search19850312-1234.xml"));
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(BVilnorTest, OpenExistCaseStartsTheProgramOnTheLinkedCase) {
  database.Answer(u"SELECT * FROM Vilnor WHERE VilnorId = 7", {{u"CaseId"}, {{u"L-1"}}});
  vilnor.OpenExistCase(7);
  EXPECT_EQ(processes.started, Started(u"InExistCase7.xml"));
}

TEST_F(BVilnorTest, OpenExistCaseWhoseRequestCannotBeWrittenStartsTheProgramWithoutArguments) {
  database.installed = false;
  vilnor.OpenExistCase(7);
  EXPECT_EQ(dialogs.Texts(), Texts{u"429 ActiveX component can't create object in WriteExistCase"});
  EXPECT_EQ(processes.started, Texts{u"C:\\Link\\Link.exe"});
}

TEST_F(BVilnorTest, OpenExistFHPPassesTheLinkRecordOnOrZero) {
  database.Answer(u"SELECT VilnorId from Vilnor where FHP_ID = 8 AND CaseType = 1",
                  {{u"VilnorId"}, {{std::int32_t{77}}}});
  vilnor.OpenExistFHP(8);
  vilnor.OpenExistFHP(9);
  EXPECT_TRUE(Exists(u"InExistCase77.xml"));
  EXPECT_TRUE(Exists(u"InExistCase0.xml"));
}

TEST_F(BVilnorTest, OpenExistFHPReportsTheNameOfOpenExistCase) {
  database.installed = false;
  vilnor.OpenExistFHP(8);
  EXPECT_EQ(dialogs.shown,
            (std::vector<platform::MessageBox>{
                {.text = u"429 ActiveX component can't create object in OpenExistCase",
                 .title = u"Vilnor Link connection",
                 .icon = Icon::Exclamation}}));
  EXPECT_TRUE(processes.started.empty());
}

TEST_F(BVilnorTest, OpenVilnorNeedsNoHostRegistrationAndPassesNoArguments) {
  registry.SetText(kLocalMachine, kHostKey, u"Path", u"");
  vilnor.OpenVilnor();
  EXPECT_EQ(processes.started, Texts{u"C:\\Link\\Link.exe"});
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(BVilnorTest, MissingLinkProgramIsReportedAndOnlyTheDirectoryIsMade) {
  registry.SetText(kLocalMachine, kLinkKey, u"Path", u"");
  struct Operation {
    std::function<void()> open;
    int connectionsLeft;
  };
  const std::vector<Operation> operations = {{[&] { vilnor.OpenExistCase(7); }, 0},
                                             {[&] { vilnor.OpenExistFHP(8); }, 0},
                                             {[&] { vilnor.OpenWithNewFHP(4711, 12, 3, 8); }, 0},
                                             {[&] { vilnor.OpenSearchPatient(4711); }, 1},
                                             {[&] { vilnor.OpenWithNewCase(4711, 12, 3); }, 1}};
  for (const auto& [open, connectionsLeft] : operations) {
    db::ReleaseGDB();
    dialogs.shown.clear();
    std::filesystem::remove_all(folder / "Vilnor");
    open();
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(dialogs.shown.front().text.starts_with(u"Kunde inte hitta"));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "Vilnor"));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "Vilnor"));
    EXPECT_TRUE(processes.started.empty());
    EXPECT_EQ(database.OpenConnections(), connectionsLeft);
  }
}

TEST_F(BVilnorTest, MissingHostRegistrationIsReportedBeforeTheMissingLinkProgram) {
  registry.SetText(kLocalMachine, kHostKey, u"Path", u"");
  registry.SetText(kLocalMachine, kLinkKey, u"Path", u"");
  vilnor.OpenExistCase(7);
  ASSERT_EQ(dialogs.shown.size(), 2U);
  EXPECT_EQ(dialogs.shown[0].text,
            u"10001 Did not find Kestra Dental registry information in GetVilnorOutputPath");
  EXPECT_TRUE(dialogs.shown[1].text.starts_with(u"Kunde inte hitta"));
}

TEST_F(BVilnorTest, ResultIsNotSearchedWithoutAHostRegistration) {
  registry.SetText(kLocalMachine, kHostKey, u"Path", u"");
  Put(u"OutNewCase4711.xml", "<a><Cancelled>1</Cancelled></a>");
  vilnor.ReadNewCase(4711);
  EXPECT_EQ(dialogs.Texts(),
            Texts{u"10001 Did not find Kestra Dental registry information in GetVilnorOutputPath"});
  EXPECT_TRUE(Exists(u"OutNewCase4711.xml"));
  EXPECT_EQ(events.count, 0);
}

TEST_F(BVilnorTest, ResultDirectoryIsLookedUpBeforeItsLink) {
  registry.SetText(kLocalMachine, kHostKey, u"Path", u"");
  database.FailStatement(u"SELECT * FROM Vilnor", kServerGone);
  vilnor.ReadExistCase(4711);
  EXPECT_EQ(dialogs.Texts(),
            (Texts{u"10001 Did not find Kestra Dental registry information in GetVilnorOutputPath",
                   u"-2147467259 server closed the connection in GetCaseIdByVilnorId"}));
}

TEST_F(BVilnorTest, UnknownPatientIsReportedAndNothingIsWritten) {
  vilnor.OpenWithNewCase(1, 12, 3);
  EXPECT_EQ(dialogs.Texts(),
            Texts{u"91 Object variable or With block variable not set in OpenWithNewCase"});
  vilnor.OpenSearchPatient(1);
  EXPECT_EQ(dialogs.Texts().back(),
            u"91 Object variable or With block variable not set in OpenSearchPatient");
  EXPECT_TRUE(processes.started.empty());
  EXPECT_TRUE(std::filesystem::is_empty(folder / "Vilnor"));
}

TEST_F(BVilnorTest, PatientWithoutANameOrBirthDateIsReported) {
  const auto date = automation::MakeDate({1985, 3, 12, 0, 0, 0});
  database.Answer(std::u16string(kPatient) + u"1", {{u"fDato", u"PersNr", u"ForNavn", u"Navn"},
                                                    {{date, u"1", automation::Null(), u"b"}}});
  database.Answer(std::u16string(kPatient) + u"2", {{u"fDato", u"PersNr", u"ForNavn", u"Navn"},
                                                    {{automation::Null(), u"1", u"a", u"b"}}});
  vilnor.OpenWithNewCase(1, 12, 3);
  vilnor.OpenWithNewCase(2, 12, 3);
  EXPECT_EQ(dialogs.Texts(), (Texts{u"94 Invalid use of Null in OpenWithNewCase",
                                    u"94 Invalid use of Null in OpenWithNewCase"}));
}

TEST_F(BVilnorTest, MissingHostRegistrationLeavesARequestWithoutADirectory) {
  registry.SetText(kLocalMachine, kHostKey, u"Path", u"");
  vilnor.OpenExistCase(7);
  EXPECT_EQ(dialogs.Texts().front(),
            u"10001 Did not find Kestra Dental registry information in GetVilnorOutputPath");
}

TEST_F(BVilnorTest, FHPExistsRaisesFourEvents) {
  database.Answer(u"SELECT * FROM Vilnor WHERE FHP_ID = 8 and CaseType = 1",
                  {{u"VilnorId"}, {{std::int32_t{77}}}});
  EXPECT_TRUE(vilnor.FHPExists(8));
  EXPECT_EQ(events.count, 4);
  EXPECT_FALSE(vilnor.FHPExists(9));
  EXPECT_EQ(events.count, 8);
}

TEST_F(BVilnorTest, FHPExistsRaisesOneEventWhenTheDatabaseCannotBeOpened) {
  database.installed = false;
  EXPECT_FALSE(vilnor.FHPExists(8));
  EXPECT_EQ(events.count, 1);
  EXPECT_EQ(dialogs.Texts(), Texts{u"429 ActiveX component can't create object in FHPExists"});
}

TEST_F(BVilnorTest, FHPExistsRaisesItsEventsAroundTheObjectsLife) {
  std::vector<int> connections;
  std::vector<std::size_t> queries;
  events.atEach = [&] {
    connections.push_back(database.AliveConnections());
    queries.push_back(database.LogOf(u"Recordset.Open").size());
  };
  vilnor.FHPExists(8);
  EXPECT_EQ(connections, (std::vector<int>{0, 1, 1, 0}));
  EXPECT_EQ(queries, (std::vector<std::size_t>{0, 0, 1, 1}));
}

TEST_F(BVilnorTest, FHPExistsStopsAtAFailedQueryWithTheQuerysOwnBox) {
  database.FailStatement(u"SELECT * FROM Vilnor WHERE FHP_ID", kServerGone);
  EXPECT_FALSE(vilnor.FHPExists(8));
  EXPECT_EQ(events.count, 2);
  EXPECT_EQ(dialogs.shown, (std::vector<platform::MessageBox>{
                               {.text = u"-2147467259 server closed the connection in CaseExists",
                                .title = u"Vilnor Link connection",
                                .icon = Icon::Critical}}));
  EXPECT_EQ(database.AliveConnections(), 0);

  database.ClearFailures();
  database.Answer(u"SELECT * FROM Vilnor WHERE FHP_ID = 8 and CaseType = 1",
                  {{u"VilnorId"}, {{std::int32_t{77}}}});
  EXPECT_TRUE(vilnor.FHPExists(8));
  EXPECT_EQ(events.count, 6);
}

TEST_F(BVilnorTest, FHPExistsIgnoresBoxesShownInItsEvents) {
  events.atEach = [&] {
    if (events.count == 2) {
      util::ShowError(kServerGone, u" in the host", Icon::Exclamation);
    }
  };
  vilnor.FHPExists(8);
  EXPECT_EQ(events.count, 4);
}

TEST_F(BVilnorTest, UserMappingGoesThroughTheDatabaseClass) {
  vilnor.AddNewVilnorUser(5, u"'kåre'");
  vilnor.DeleteVilnorUser(5);
  database.Answer(u"SELECT UserName from VilnorPasient where PID = 6", {{u"UserName"}, {{u"eva"}}});
  vilnor.UpdateVilnorUser(6, u"'ove'");
  EXPECT_EQ(vilnor.GetVilnorUserByPID(6), u"eva");
  EXPECT_EQ(vilnor.GetVilnorUserByPID(7), u"");
  EXPECT_EQ(
      database.LogOf(u"Execute"),
      (Texts{u"Execute -1: Insert into VilnorPasient (PID, UserName) VALUES (5,'kåre')",
             u"Execute -1: Delete from VilnorPasient where PID = 5",
             u"Execute -1: Update VilnorPasient SET PID = 6, UserName = 'ove' Where PID= 6"}));
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(BVilnorTest, UserMappingReportsAMissingDatabaseUnderItsOwnNames) {
  database.installed = false;
  vilnor.AddNewVilnorUser(5, u"x");
  vilnor.UpdateVilnorUser(5, u"x");
  vilnor.DeleteVilnorUser(5);
  EXPECT_EQ(vilnor.GetVilnorUserByPID(5), u"");
  const std::u16string error = u"429 ActiveX component can't create object in ";
  EXPECT_EQ(dialogs.Texts(), (Texts{error + u"AddNewVilnorUser", error + u"UpdateVilnorUser",
                                    error + u"DeleteVilnorUser", error + u"GetVilnorUserByPID"}));
}

TEST_F(BVilnorTest, ReadersRaiseUpdateJournalOnTheirObject) {
  Put(u"OutNewCase4711.xml",
      "<a><Status>5</Status><Id>L-9</Id><UserDefData>4711&amp;12&amp;3</UserDefData></a>");
  database.AnswerIdentities({std::int32_t{1}, std::int32_t{2}});
  vilnor.ReadNewCase(4711);
  EXPECT_EQ(events.count, 1);
  EXPECT_FALSE(Exists(u"OutNewCase4711.xml"));
}

class OpenWithNewFHP : public HostOn<fhp::FhpFixture> {};

TEST_F(OpenWithNewFHP, OpenWithNewFHPStartsTheProgramOnTheWrittenApplication) {
  Script();
  vilnor.OpenWithNewFHP(5, 6, 7, 8);
  EXPECT_EQ(processes.started, Started(u"InNewFHP8.xml"));
  EXPECT_TRUE(File().ends_with("</Envelope>\n"));
  EXPECT_TRUE(dialogs.shown.empty());
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(OpenWithNewFHP, OpenWithNewFHPIsNotCountedAsALaunch) {
  Script();
  NoFiles noFiles;
  platform::Platform changed = fakes::With(ports, noFiles);
  platform::Use(changed);
  for (int i = 0; i < 32767; ++i) {
    vilnor.OpenExistCase(7);
  }
  vilnor.OpenWithNewFHP(5, 6, 7, 8);
  EXPECT_EQ(processes.started.size(), 32768U);
  EXPECT_EQ(processes.started.back(), Started(u"InNewFHP8.xml").front());
  EXPECT_TRUE(dialogs.shown.empty());
  platform::Use(ports);
}

TEST_F(OpenWithNewFHP, OpenWithNewFHPMayFollowTheSendCheck) {
  database.Answer(
      u"SELECT * FROM SEPrerequest WHERE SEPrerequestID = 8",
      {{u"PlanTreatm", u"PlanTreatmUJaw", u"PlanTreatmLJaw"}, {{u"<11>1 2 3 4</11>", u"", u""}}});
  std::int16_t errCode = 7;
  std::u16string errMsg = u"host's";
  EXPECT_TRUE(vilnor.OKToSend(8, errCode, errMsg));
  EXPECT_EQ(errCode, 0);
  EXPECT_EQ(errMsg, u"");
}

TEST_F(OpenWithNewFHP, MissingApplicationStartsNothing) {
  application.clear();
  Script();
  Put(u"InNewFHP8.xml", "older");
  vilnor.OpenWithNewFHP(5, 6, 7, 8);
  EXPECT_EQ(dialogs.Texts(),
            Texts{u"91 Object variable or With block variable not set in WriteNewFHP"});
  EXPECT_TRUE(processes.started.empty());
  EXPECT_EQ(File(), "older");
}

TEST_F(OpenWithNewFHP, ApplicationThatCannotBeWrittenStartsNothing) {
  class ProtectedFiles : public native::LocalFiles {
   public:
    void ReplaceContents(const std::u16string& /*path*/, std::string_view /*bytes*/) override {
      throw automation::AutomationError(automation::RuntimeError::PermissionDenied);
    }
  } protectedFiles;
  platform::Platform changed = fakes::With(ports, protectedFiles);
  platform::Use(changed);
  Script();
  Put(u"InNewFHP8.xml", "older");
  vilnor.OpenWithNewFHP(5, 6, 7, 8);
  EXPECT_EQ(dialogs.Texts(), Texts{u"70 Permission denied in WriteNewFHP"});
  EXPECT_TRUE(processes.started.empty());
  EXPECT_EQ(File(), "older");
  platform::Use(ports);
}

}  // namespace
}  // namespace host
