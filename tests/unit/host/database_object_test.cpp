// The database object that operations leave behind, share with the host, or find replaced.
#include <functional>

#include "db/db_vilnor.h"
#include "unit/host/host_fixture.h"

namespace host {
namespace {

using Texts = std::vector<std::u16string>;

class DatabaseObject : public BVilnorTest {
 protected:
  DatabaseObject() {
    database.Answer(u"SELECT * FROM Vilnor WHERE FHP_ID = 8 and CaseType = 1",
                    {{u"VilnorId"}, {{std::int32_t{77}}}});
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
  }
  // "Kunde inte hitta Vilnor Link" ends the operation while its object still exists.
  void LeaveOneBehind() {
    registry.SetText(kLocalMachine, kLinkKey, u"Path", u"");
    vilnor.OpenWithNewCase(4711, 12, 3);
    registry.SetText(kLocalMachine, kLinkKey, u"Path", u"C:\\Link");
    EXPECT_EQ(database.OpenConnections(), 1);
    dialogs.shown.clear();
    events.count = 0;
  }
  void PutSentCase() const {
    Put(u"OutNewCase4711.xml",
        "<a><Status>5</Status><Id>L-9</Id><UserDefData>4711&amp;12&amp;3</UserDefData></a>");
  }
  std::size_t Inserts() const { return database.LogOf(u"Execute -1: Insert into Vilnor").size(); }
};

TEST_F(DatabaseObject, LeftoverGDBIsReplacedByTheNextOperation) {
  const auto operations = std::to_array<std::function<void()>>(
      {[&] { vilnor.OpenWithNewCase(4711, 12, 3); }, [&] { vilnor.OpenSearchPatient(4711); },
       [&] { vilnor.OpenExistCase(7); }, [&] { vilnor.OpenExistFHP(8); },
       [&] { EXPECT_TRUE(vilnor.FHPExists(8)); },
       [&] {
         PutSentCase();
         vilnor.ReadNewCase(4711);
       },
       [&] { vilnor.GetVilnorUserByPID(4711); }});
  for (const auto& operation : operations) {
    LeaveOneBehind();
    operation();
    EXPECT_EQ(dialogs.Texts(), Texts());
    EXPECT_EQ(database.AliveConnections(), 0);
  }
  EXPECT_EQ(Inserts(), 1U);
  EXPECT_FALSE(Exists(u"OutNewCase4711.xml"));
}

TEST_F(DatabaseObject, LeftoverGDBOfFiveFailedSearchesIsReplacedEachTime) {
  for (int i = 0; i < 5; ++i) {
    vilnor.OpenSearchPatient(1);
  }
  EXPECT_EQ(dialogs.Texts(),
            Texts(5, u"91 Object variable or With block variable not set in OpenSearchPatient"));
  vilnor.OpenSearchPatient(4711);
  EXPECT_EQ(dialogs.shown.size(), 5U);
}

TEST_F(DatabaseObject, LeftoverGDBEndsWithItsBVilnor) {
  {
    BVilnor session(events);
    session.OpenSearchPatient(1);
    EXPECT_EQ(database.OpenConnections(), 1);
  }
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(DatabaseObject, HostsOwnDBVilnorKeepsOperationsOutAndIsNotHarmed) {
  db::DBVilnor hosts;
  PutSentCase();
  vilnor.ReadNewCase(4711);
  EXPECT_EQ(dialogs.Texts(),
            Texts{u"3705 Operation is not allowed when the object is open. in ReadNewCase"});
  EXPECT_TRUE(Exists(u"OutNewCase4711.xml"));
  EXPECT_TRUE(hosts.CaseExists(8, 1));
}

// What a host may do in its handler of UpdateJournal.
struct InHandler {
  const char* name;
  std::function<void()> call;
};

class CallsInUpdateJournal : public DatabaseObject {
 protected:
  // Runs `call` in the handler of only the `event`-th event, counted from 1.
  void AtEvent(int event, std::function<void()> call) {
    events.count = 0;
    called_ = false;
    events.atEach = [this, event, call = std::move(call)] {
      if (events.count == event && !called_) {
        called_ = true;
        call();
        events.count = event;
      }
    };
  }
  std::vector<InHandler> Calls() {
    return {{"an object of the host's own",
             [] {
               try {
                 db::DBVilnor().CaseExists(8, 1);
               } catch (const automation::AutomationError& error) {
                 EXPECT_EQ(error.number(), 3705);
               }
             }},
            {"FHPExists", [this] { EXPECT_TRUE(vilnor.FHPExists(8)); }},
            {"a search", [this] { vilnor.OpenSearchPatient(4711); }},
            {"a search for nobody", [this] { vilnor.OpenSearchPatient(1); }},
            {"a user", [this] { vilnor.GetVilnorUserByPID(4711); }},
            {"another session's end", [this] { const BVilnor other(events); }}};
  }
  bool called_ = false;
};

TEST_F(CallsInUpdateJournal, FHPExistsKeepsItsResultWhenTheHostCallsAtItsEvents) {
  for (const auto& inHandler : Calls()) {
    for (int event = 1; event <= 4; ++event) {
      SCOPED_TRACE(std::string(inHandler.name) + " at event " + std::to_string(event));
      AtEvent(event, inHandler.call);
      EXPECT_TRUE(vilnor.FHPExists(8));
      EXPECT_EQ(events.count, 4);
      EXPECT_TRUE(called_);
    }
  }
}

TEST_F(CallsInUpdateJournal, OperationCalledInUpdateJournalWorksAtEachEvent) {
  for (int event = 1; event <= 4; ++event) {
    bool linked = false;
    AtEvent(event, [&] { linked = vilnor.FHPExists(8); });
    vilnor.FHPExists(9);
    EXPECT_TRUE(linked);
    EXPECT_EQ(dialogs.Texts(), Texts());
  }
}

TEST_F(CallsInUpdateJournal, OperationCalledInUpdateJournalLeavesTheResultEntered) {
  for (const auto& inHandler : Calls()) {
    SCOPED_TRACE(inHandler.name);
    const std::size_t before = Inserts();
    database.AnswerIdentities({std::int32_t{501}, std::int32_t{502}});
    PutSentCase();
    AtEvent(1, inHandler.call);
    vilnor.ReadNewCase(4711);
    EXPECT_EQ(Inserts(), before + 1);
    EXPECT_FALSE(Exists(u"OutNewCase4711.xml"));
    EXPECT_TRUE(called_);
    EXPECT_EQ(database.AliveConnections(), 0);
  }
}

// A notification may be handled while an operation's own box is open.
TEST_F(DatabaseObject, GDBIsMadeAgainAfterAResultWasReadAtTheOperationsBox) {
  class Arriving : public fakes::Dialogs {
   public:
    platform::Answer Show(const platform::MessageBox& box) override {
      const auto answer = fakes::Dialogs::Show(box);
      if (shown.size() == 1) {
        arrives();
      }
      return answer;
    }
    std::function<void()> arrives;
  } user;
  user.arrives = [&] { vilnor.ReadNewCase(4711); };
  platform::Platform changed = fakes::With(ports, user);
  platform::Use(changed);
  registry.SetText(kLocalMachine, kHostKey, u"Path", u"");
  vilnor.OpenSearchPatient(4711);
  EXPECT_EQ(user.Texts().back().substr(0, 5), u"10001");
  EXPECT_EQ(processes.started.size(), 1U);
  platform::Use(ports);
}

}  // namespace
}  // namespace host
