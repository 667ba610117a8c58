// The trace of whole trips, of the silent ends outside the readers, and that nothing personal is in
// it.
#include <algorithm>
#include <fstream>
#include <set>

#include "exchange/envelope.h"
#include "host/notification_window.h"
#include "unit/host/host_fixture.h"

namespace host {
namespace {

using Lines = std::vector<std::string>;
using platform::Reason;

class TracedOperations : public BVilnorTest {
 protected:
  TracedOperations() { trace.TurnOn(); }
  std::int32_t Notify(std::int32_t message) { return windows.Send(NotifyWnd(), message, 4711); }
  // All lines, also those of a procedure within another.
  Lines All() const {
    Lines texts;
    for (const auto& line : trace.lines) {
      texts.push_back(fakes::Trace::TextOf(line));
    }
    return texts;
  }
  bool Has(const std::string& text) const {
    const auto all = All();
    return std::find(all.begin(), all.end(), text) != all.end();
  }
};

TEST_F(TracedOperations, TripIsToldInThreeLines) {
  vilnor.OpenWithNewCase(4711, 12, 3);
  Put(u"OutNewCase4711.xml",
      "<a><Status>5</Status><Id>L-9</Id><UserDefData>4711&amp;12&amp;3</UserDefData></a>");
  database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
  Notify(10002);
  EXPECT_EQ(trace.Texts(), (Lines{"OpenWithNewCase Done", "ReadNewCase NewCase Deleted Entered",
                                  "MsgHandling Done"}));
  EXPECT_TRUE(Has("StartVilnor Done"));
  EXPECT_TRUE(Has("WriteNewCase Done"));
}

TEST_F(TracedOperations, ReadingThatTheHostCallsIsToldInItsRegions) {
  Put(u"OutNewCase4711.xml",
      "<a><Status>5</Status><Id>L-9</Id><UserDefData>4711&amp;12&amp;3</UserDefData></a>");
  database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
  vilnor.ReadNewCase(4711);
  EXPECT_EQ(trace.Texts(), (Lines{"GetVilnorOutputPath Done", "XMLReadNewCase Done",
                                  "ReadNewCase Done", "ReadNewCase NewCase Deleted Entered"}));
  EXPECT_EQ(trace.lines.at(trace.lines.size() - 2).depth, 0);
  EXPECT_TRUE(Has("AddNewCase Done"));
}

TEST_F(TracedOperations, AnswerWithoutItsFileIsTold) {
  Notify(10001);
  Notify(10002);
  Notify(10009);
  Lines kinds;
  for (const auto& line : trace.lines) {
    if (line.reason == Reason::NotFound) {
      kinds.push_back(NameOf(line.file));
    }
  }
  EXPECT_EQ(kinds, (Lines{"NewFHP", "NewCase", "ExistCase"}));
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(TracedOperations, UnknownNotificationIsToldAndTheSystemsMessagesAreNot) {
  for (const std::int32_t message : {0, 0x1A, 0x219, 0x3FF, 0xC000, 0xC123}) {
    Notify(message);
  }
  EXPECT_TRUE(trace.lines.empty());
  for (const std::int32_t message : {0x400, 10003, 0xBFFF}) {
    Notify(message);
  }
  EXPECT_EQ(All(), Lines(3, "MsgHandling Noted UnknownMessage"));
}

TEST_F(TracedOperations, MissingWindowIsTold) {
  class NoWindows : public fakes::WindowSystem {
   public:
    platform::WindowHandle CreateWindow(const platform::WindowDescription& /*window*/) override {
      return 0;
    }
  } none;
  platform::Platform changed = fakes::With(ports, none);
  platform::Use(changed);
  EXPECT_EQ(CreateForm(), 0);
  platform::Use(ports);
  EXPECT_TRUE(Has("CreateForm Noted NoWindow"));
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(TracedOperations, UnreadableKeyOfTheLinkProgramIsTold) {
  registry.DenyWrite(kLocalMachine, kLinkKey);
  userSettings.Save(u"KESTRA", u"Environment", u"Vilnor", hostPath + u"Link.exe");
  std::ofstream(folder / "Link.exe") << "MZ";
  vilnor.OpenVilnor();
  EXPECT_TRUE(dialogs.shown.empty());
  EXPECT_EQ(processes.started.size(), 1U);
  const auto texts = trace.Texts();
  ASSERT_EQ(texts.size(), 2U);
  EXPECT_TRUE(texts[0].starts_with("GetVilnorCommandLine Noted LinkKeyUnreadable "));
  EXPECT_EQ(texts[1], "OpenVilnor Done");
}

TEST_F(TracedOperations, CaseWithoutALinkIsTold) {
  vilnor.OpenExistFHP(77);
  EXPECT_TRUE(Has("GetVilnorIdByFHPId Empty"));
  EXPECT_TRUE(Has("GetCaseIdByVilnorId Empty"));
  EXPECT_EQ(trace.Texts(), Lines{"OpenExistFHP Done"});
}

TEST_F(TracedOperations, OperationsWhoseBoxNamesAnotherHaveTheirOwnName) {
  vilnor.OpenExistFHP(77);
  vilnor.UpdateVilnorUser(4711, u"'anna'");
  EXPECT_EQ(trace.Texts(), (Lines{"OpenExistFHP Done", "UpdateVilnorUser Done"}));
}

TEST_F(TracedOperations, MissingDatabaseIsToldWithItsNumber) {
  database.installed = false;
  vilnor.OpenSearchPatient(4711);
  EXPECT_EQ(trace.Texts(), (Lines{"DBVilnor Raised 429", "OpenSearchPatient Failed 429"}));
}

// Everything that may not be in a trace, in places from which it could get there.
class Canaries : public TracedOperations {
 protected:
  Canaries() {
    util::CurrentSettings().gConnectionParameter = u"DSN=Kanarie;UID=canary;PWD=kanarie-hemlig";
    database.Answer(std::u16string(kPatient) + u"4711",
                    {{u"fDato", u"PersNr", u"ForNavn", u"Navn"},
                     {{automation::MakeDate({1985, 3, 12, 0, 0, 0}), u"9876", u"Kanariefågel",
                       u"Kanarieson"}}});
  }
  void ReadResults(const std::string& status) {
    const std::string result =
        "<a><Status>" + status +
        "</Status><Id>26100417</Id><UserName>kanarie</UserName>"
        "<UserDefData>4711&amp;12&amp;3&amp;77&amp;2026-077</UserDefData></a>";
    Put(u"OutNewFHP4711.xml", result);
    Put(u"OutNewCase4711.xml", result);
    Put(u"OutExistCase4711.xml", result);
    for (const std::int32_t message : {10001, 10002, 10009}) {
      Notify(message);
    }
  }
  void DoEverything() {
    vilnor.OpenWithNewCase(4711, 12, 3);
    vilnor.OpenSearchPatient(4711);
    vilnor.OpenExistCase(4711);
    vilnor.OpenExistFHP(4711);
    vilnor.OpenWithNewFHP(4711, 12, 3, 4711);
    vilnor.FHPExists(4711);
    vilnor.WriteNewCase(4711, 12, 3, u"19850312-9876", u"Kanariefågel", u"Kanarieson", u"kanarie");
    vilnor.AddNewVilnorUser(4711, u"'kanarie'");
    for (const char* status : {"1", "5", "7", "26100417", "198503129876", "Kanarieson"}) {
      ReadResults(status);
    }
  }
};

TEST_F(Canaries, NothingPersonalIsInTheTrace) {
  DoEverything();
  const automation::AutomationError talkative(-2147217900, u"kanarie.exe",
                                              u"Syntaxfel: VALUES (4711, 'Kanarieson')");
  for (const char16_t* statement : {u"SELECT", u"Insert", u"Update", u"Delete"}) {
    database.FailStatement(statement, talkative);
  }
  DoEverything();
  std::string everything;
  for (const auto& line : trace.lines) {
    everything += fakes::Trace::TextOf(line) + "\n";
  }
  EXPECT_NE(everything.find("Failed -2147217900"), std::string::npos);
  EXPECT_NE(everything.find("Failed 6"), std::string::npos) << "the person number as a status";
  for (const char* canary : {"anarie", "canary", "9876", "1985", "4711", "26100417", "2026-077",
                             "12,3", "DSN", "SELECT", "VALUES", "xml", "\\", "/", "'"}) {
    EXPECT_EQ(everything.find(canary), std::string::npos) << canary << " is in\n" << everything;
  }
  // Even the numbers are the runtime's, ADO's or the parser's.
  const std::set<std::int32_t> known = {0, 5, 6, 13, 76, 91, 3021};
  for (const auto& line : trace.lines) {
    EXPECT_TRUE(line.error < 0 || known.contains(line.error)) << fakes::Trace::TextOf(line);
  }
}

}  // namespace
}  // namespace host
