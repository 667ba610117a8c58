#include "host/b_vilnor.h"

#include <functional>
#include <thread>

#include "exchange/envelope.h"
#include "fakes/component_fixture.h"
#include "host/notification_window.h"

namespace host {
namespace {

using Texts = std::vector<std::u16string>;
using platform::Icon;

constexpr std::uint32_t kLocalMachine = 0x80000002;
constexpr const char16_t* kLinkKey =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe";
constexpr const char16_t* kHostKey = u"SOFTWARE\\Kestra\\Kestra.Main.exe";
constexpr const char16_t* kPatient = u"SELECT  fDato, PersNr,ForNavn,Navn from Pasient where ID = ";
constexpr const char16_t* kPatientSsn = u"SELECT  fDato, PersNr from Pasient where ID = ";

class CountingEvents : public Events {
 public:
  void UpdateJournal() override {
    ++count;
    if (atEach) {
      atEach();
    }
  }
  int count = 0;
  std::function<void()> atEach;
};

class BVilnorTest : public fakes::ComponentFixture {
 protected:
  BVilnorTest() {
    registry.SetText(kLocalMachine, kHostKey, u"Path", hostPath);
    registry.SetText(kLocalMachine, kLinkKey, u"Path", u"C:\\Link");
    database.Answer(
        std::u16string(kPatient) + u"4711",
        {{u"fDato", u"PersNr", u"ForNavn", u"Navn"},
         {{automation::MakeDate({1985, 3, 12, 0, 0, 0}), u"1234", u"Åsa-Märta", u"Öberg"}}});
    database.Answer(
        std::u16string(kPatientSsn) + u"4711",
        {{u"fDato", u"PersNr"}, {{automation::MakeDate({1985, 3, 12, 0, 0, 0}), u"1234"}}});
  }
  Texts Started(const std::u16string& request) const {
    return {u"C:\\Link\\Link.exe path=\"" + ExchangePath(request) +
            u"\" version=2 caller=KestraDental removefiles=1"};
  }
  CountingEvents events;
  BVilnor vilnor{events};
};

TEST_F(BVilnorTest, InitVilnorStoresTheSessionForEveryObject) {
  locale.UseSwedish();
  BVilnor second(events);
  vilnor.InitVilnor(u"Driver=A", 1, 2);
  second.InitVilnor(u"Driver=B", 4, 1);
  const auto& session = util::CurrentSession();
  EXPECT_EQ(session.gConnectionParameter, u"Driver=B");
  EXPECT_EQ(session.gKestraLangID, 4);
  EXPECT_EQ(session.gDbType, 1);
  EXPECT_EQ(session.gDateFormat, u"yyyy-MM-dd");
  EXPECT_TRUE(database.Log().empty());
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

TEST_F(BVilnorTest, OpenVilnorStartsTheProgramAloneAndNeedsNoHostRegistration) {
  registry.SetText(kLocalMachine, kHostKey, u"Path", u"");
  vilnor.OpenVilnor();
  EXPECT_EQ(processes.started, Texts{u"C:\\Link\\Link.exe"});
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(BVilnorTest, WithoutTheLinkProgramOnlyTheDirectoryIsMadeAndTheUserTold) {
  registry.SetText(kLocalMachine, kLinkKey, u"Path", u"");
  const std::vector<std::function<void()>> operations = {
      [&] { vilnor.OpenExistCase(7); }, [&] { vilnor.OpenWithNewFHP(4711, 12, 3, 8); },
      [&] { vilnor.OpenSearchPatient(4711); }};
  for (const auto& open : operations) {
    dialogs.shown.clear();
    std::filesystem::remove_all(folder / "Vilnor");
    open();
    ASSERT_EQ(dialogs.shown.size(), 1U);
    EXPECT_TRUE(dialogs.shown.front().text.starts_with(u"Kunde inte hitta"));
    EXPECT_TRUE(std::filesystem::is_directory(folder / "Vilnor"));
    EXPECT_TRUE(std::filesystem::is_empty(folder / "Vilnor"));
    EXPECT_TRUE(processes.started.empty());
  }
}

TEST_F(BVilnorTest, AConnectionLeftOpenFailsTheNextOperationOnceAndTheOneAfterItWorks) {
  registry.SetText(kLocalMachine, kLinkKey, u"Path", u"");
  vilnor.OpenWithNewCase(4711, 12, 3);
  EXPECT_EQ(database.OpenConnections(), 1);
  registry.SetText(kLocalMachine, kLinkKey, u"Path", u"C:\\Link");
  dialogs.shown.clear();
  vilnor.OpenWithNewCase(4711, 12, 3);
  EXPECT_EQ(dialogs.Texts(),
            Texts{u"3705 Operation is not allowed when the object is open. in OpenWithNewCase"});
  vilnor.OpenWithNewCase(4711, 12, 3);
  EXPECT_EQ(dialogs.shown.size(), 1U);
  EXPECT_EQ(processes.started, Started(u"InNewCase4711.xml"));
}

TEST_F(BVilnorTest, APatientWhoDoesNotExistIsReportedAndNothingIsWritten) {
  vilnor.OpenWithNewCase(1, 12, 3);
  EXPECT_EQ(dialogs.Texts(),
            Texts{u"91 Object variable or With block variable not set in OpenWithNewCase"});
  db::ReleaseGDB();
  vilnor.OpenSearchPatient(1);
  EXPECT_EQ(dialogs.Texts().back(),
            u"91 Object variable or With block variable not set in OpenSearchPatient");
  EXPECT_TRUE(processes.started.empty());
  EXPECT_TRUE(std::filesystem::is_empty(folder / "Vilnor"));
}

TEST_F(BVilnorTest, APatientWithoutANameOrBirthDateIsReported) {
  const auto date = automation::MakeDate({1985, 3, 12, 0, 0, 0});
  database.Answer(std::u16string(kPatient) + u"1", {{u"fDato", u"PersNr", u"ForNavn", u"Navn"},
                                                    {{date, u"1", automation::Null(), u"b"}}});
  database.Answer(std::u16string(kPatient) + u"2", {{u"fDato", u"PersNr", u"ForNavn", u"Navn"},
                                                    {{automation::Null(), u"1", u"a", u"b"}}});
  vilnor.OpenWithNewCase(1, 12, 3);
  db::ReleaseGDB();
  vilnor.OpenWithNewCase(2, 12, 3);
  EXPECT_EQ(dialogs.Texts(), (Texts{u"94 Invalid use of Null in OpenWithNewCase",
                                    u"94 Invalid use of Null in OpenWithNewCase"}));
}

TEST_F(BVilnorTest, AMissingHostRegistrationLeavesARequestWithoutAPlace) {
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

TEST_F(BVilnorTest, FHPExistsEndsAtAnErrorAfterTheSecondEvent) {
  events.atEach = [&] {
    if (events.count == 2) {
      db::ReleaseGDB();
    }
  };
  EXPECT_FALSE(vilnor.FHPExists(8));
  EXPECT_EQ(events.count, 2);
  EXPECT_EQ(dialogs.Texts(),
            Texts{u"91 Object variable or With block variable not set in FHPExists"});
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

// Folders that are there and files that need no disk.
class NoFiles : public platform::Files {
 public:
  bool FolderExists(const std::u16string& /*path*/) override { return true; }
  void CreateFolder(const std::u16string& /*path*/) override {}
  std::int64_t FileLength(const std::u16string& /*path*/) override { return 0; }
  void DeleteFile(const std::u16string& /*path*/) override {}
  void ReplaceContents(const std::u16string& /*path*/, std::string_view /*bytes*/) override {}
};

TEST_F(BVilnorTest, LaunchesAreCountedIn16BitsAndTheirOverflowIsReported) {
  NoFiles noFiles;
  platform::Platform changed{clock,        locale,   dialogs,  processes, noFiles,
                             userSettings, registry, database, documents, windows};
  platform::Use(changed);
  for (int i = 0; i < 32767; ++i) {
    vilnor.OpenExistCase(7);
  }
  ASSERT_EQ(processes.started.size(), 32767U);
  vilnor.OpenExistCase(7);
  EXPECT_EQ(dialogs.Texts(), Texts{u"6 Overflow in OpenExistCase"});
  vilnor.OpenVilnor();
  EXPECT_EQ(processes.started.size(), 32768U);
  platform::Use(ports);
}

class NotificationWindow : public BVilnorTest {};

TEST_F(NotificationWindow, IsHiddenTopLevelAndOfTheAnnouncedClass) {
  const platform::WindowHandle window = NotifyWnd();
  const auto& description = windows.windows.at(window);
  EXPECT_EQ(description.className, u"KestraToVilnor");
  EXPECT_EQ(description.title, u"VB Window");
  EXPECT_EQ(description.style, 0);
  EXPECT_EQ(description.extendedStyle, 0);
  EXPECT_EQ(description.x, 0);
  EXPECT_EQ(description.y, 0);
  EXPECT_EQ(description.width, 640);
  EXPECT_EQ(description.height, 480);
  EXPECT_EQ(description.parent, 0);
  const auto& windowClass = windows.classes.at(u"KestraToVilnor");
  EXPECT_EQ(windowClass.procedure, &MsgHandling);
  EXPECT_EQ(windowClass.style, 0);
  EXPECT_EQ(windowClass.menuName, u"");
}

TEST_F(NotificationWindow, GivesEveryMessageItsDefaultProcessingAndResult) {
  windows.defaultResult = 42;
  const auto known = windows.windows.size();
  EXPECT_EQ(windows.Send(NotifyWnd(), 10003, 5, 6), 42);
  EXPECT_EQ(windows.defaulted.back(), std::make_tuple(NotifyWnd(), 10003, 5, 6));
  EXPECT_EQ(windows.windows.size(), known);
}

// On a thread of its own, where no notification has come yet.
template <class Body>
void OnFreshThread(Body body) {
  std::thread(body).join();
}

TEST_F(NotificationWindow, HandsTheThreeMessagesToTheirReadersAfterTheDefaultProcessing) {
  OnFreshThread([&] {
    platform::Use(ports);
    util::CurrentSession().gDbType = 1;
    BVilnor own(events);
    const platform::WindowHandle first = NotifyWnd();
    const auto known = windows.windows.size();
    struct Message {
      std::int32_t number;
      const char16_t* file;
    };
    for (const auto& message :
         {Message{10001, u"OutNewFHP4711.xml"}, Message{10002, u"OutNewCase4711.xml"},
          Message{10009, u"OutExistCase4711.xml"}}) {
      Put(message.file, "<a><Cancelled>1</Cancelled></a>");
      windows.Send(first, message.number, 4711);
      EXPECT_FALSE(Exists(message.file)) << message.number;
      EXPECT_EQ(std::get<1>(windows.defaulted.back()), message.number);
      EXPECT_EQ(windows.windows.size(), known + 1) << "one further window, from the first on";
      EXPECT_NE(NotifyWnd(), first);
    }
    EXPECT_GE(NotifyTargets(), 1);
    EXPECT_EQ(events.count, 0) << "the host is not connected to the object that reads";
    EXPECT_TRUE(dialogs.shown.empty());
  });
}

TEST_F(NotificationWindow, ComesAndGoesWithItsObjectWithoutABox) {
  OnFreshThread([&] {
    platform::Use(ports);
    fakes::WindowSystem fresh;
    platform::Platform changed{clock,        locale,   dialogs,  processes, files,
                               userSettings, registry, database, documents, fresh};
    platform::Use(changed);
    for (int i = 0; i < 1000; ++i) {
      const BVilnor own(events);
      EXPECT_EQ(fresh.windows.size(), 1U);
    }
    EXPECT_TRUE(fresh.windows.empty());
    EXPECT_TRUE(fresh.classes.empty());
    EXPECT_TRUE(dialogs.shown.empty());
  });
}

TEST_F(NotificationWindow, OfAnotherObjectKeepsTheClass) {
  OnFreshThread([&] {
    fakes::WindowSystem fresh;
    platform::Platform changed{clock,        locale,   dialogs,  processes, files,
                               userSettings, registry, database, documents, fresh};
    platform::Use(changed);
    const BVilnor first(events);
    { const BVilnor second(events); }
    EXPECT_EQ(fresh.windows.size(), 1U);
    EXPECT_EQ(fresh.classes.size(), 1U);
  });
}

}  // namespace
}  // namespace host
