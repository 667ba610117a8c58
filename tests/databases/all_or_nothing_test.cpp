// Each transaction takes effect completely or not at all: every call fails in turn, once before it
// reaches the database and once with its answer lost.
#include <functional>

#include "automation/text.h"
#include "databases/clinic.h"

namespace databases {
namespace {

struct Write {
  std::string name;
  std::function<void(db::DBVilnor&)> run;
  // Prepares the database for the operation.
  std::u16string prepare = u"SELECT 1";
};

std::vector<Write> Writes() {
  return {
      {"AddNewCaseOfApplication",
       [](auto& database) { database.AddNewCase(4711, 12, 3, u"VL-9", 77, 1, 5, u"åsa", u"K-9"); }},
      {"AddNewCaseOfPatient",
       [](auto& database) { database.AddNewCase(4711, 12, 3, u"VL-9", 4711, 9, 5, u"åsa"); }},
      {"UpdateCaseById", [](auto& database) { database.UpdateCaseById(102, u"3072", 1); }},
      {"UpdateCaseOfApplication", [](auto& database) { database.UpdateCase(u"3071", 71, 1, 1); },
       u"UPDATE Journal SET Tekst = 'ref.nr !2071' WHERE ID = 501"},
      {"UpdateCaseOfPatient", [](auto& database) { database.UpdateCase(u"3072", 4712, 1, 9); }},
      {"DeleteCase", [](auto& database) { database.DeleteCase(u"2072"); }},
      {"DeleteFHP", [](auto& database) { database.DeleteFHP(71); }}};
}

class AllOrNothing : public Clinic {
 protected:
  // Runs the operation with its n-th call broken, n = 1, 2, …, until n exceeds the number of calls.
  // Returns that number.
  int BreakEachCall(const Write& write, Break how, bool rollbackFails = false) {
    MakeHostDatabase();
    Run(write.prepare);
    const auto before = Written();
    for (int step = 1;; ++step) {
      dialogs.shown.clear();
      db::RenewGDB();
      database.BreakStep(step, how, rollbackFails);
      write.run(*db::GDB());
      const std::u16string broken = database.BrokenCall();
      database.BreakNothing();
      db::ReleaseGDB();
      if (broken.empty()) {
        EXPECT_TRUE(Boxes().empty()) << automation::ToUtf8(Boxes()[0]);
        EXPECT_NE(Written(), before) << "unbroken, it writes";
        return step - 1;
      }
      SCOPED_TRACE(automation::ToUtf8(broken));
      EXPECT_FALSE(Boxes().empty());
      // A commit whose answer is lost has taken effect.
      if (broken == u"CommitTrans" && how == Break::Afterwards) {
        EXPECT_NE(Written(), before);
        return step;
      }
      EXPECT_EQ(Written(), before);
    }
  }
};

TEST_P(AllOrNothing, TransactionLeavesAllOrNothingWhenAnyCallIsNotExecuted) {
  int broken = 0;
  for (const auto& write : Writes()) {
    SCOPED_TRACE(write.name);
    broken += BreakEachCall(write, Break::Instead);
  }
  EXPECT_EQ(broken, 7 + 7 + 8 + 8 + 8 + 6 + 6)
      << "calls of the seven transactions, queries included";
}

TEST_P(AllOrNothing, TransactionLeavesAllOrNothingWhenAnyAnswerIsLost) {
  for (const auto& write : Writes()) {
    SCOPED_TRACE(write.name);
    BreakEachCall(write, Break::Afterwards);
  }
}

// Closing the connection undoes what the rollback did not.
TEST_P(AllOrNothing, TransactionLeavesAllOrNothingWhenTheRollbackFailsToo) {
  for (const auto& write : Writes()) {
    SCOPED_TRACE(write.name);
    BreakEachCall(write, Break::Instead, true);
  }
}

INSTANTIATE_FOR_PRODUCTS(AllOrNothing);

}  // namespace
}  // namespace databases
