// The database calls of every operation, and the effects of each failure.
#include "operations.h"

#include <fstream>
#include <iterator>

#include "fixture.h"

namespace unit {
namespace {

bool IsRead(const std::u16string& entry) {
  return entry == u"Recordset.EOF" || entry.starts_with(u"Recordset.Field");
}

// Checked while a box is shown: it may stay open over lunch, so no transaction may be open.
class WatchingDialogs : public fakes::Dialogs {
 public:
  explicit WatchingDialogs(const fakes::Database& database) : database_(database) {}
  platform::Answer Show(const platform::MessageBox& box) override {
    rollbacksBefore.push_back(database_.LogOf(u"RollbackTrans").size());
    EXPECT_FALSE(database_.InTransaction());
    return fakes::Dialogs::Show(box);
  }
  std::vector<std::size_t> rollbacksBefore;

 private:
  const fakes::Database& database_;
};

class EveryOperation : public DbTest, public testing::WithParamInterface<Operation> {
 protected:
  std::vector<std::u16string> ExpectedLog() const {
    std::vector<std::u16string> entries;
    for (const auto& call : GetParam().calls) {
      entries.push_back(call.entry);
    }
    return entries;
  }

  // The boxes shown when the last call in the log fails. A read of a recordset belongs to the call
  // before it.
  const std::vector<std::u16string>& ExpectedBoxes(
      const std::vector<std::u16string>& logUpToFailure) const {
    const auto calls = std::count_if(logUpToFailure.begin(), logUpToFailure.end(),
                                     [](const auto& entry) { return !IsRead(entry); });
    return GetParam().calls.at(static_cast<std::size_t>(calls) - 1).boxesWhenItFails;
  }

  bool HasTransaction() const {
    const auto log = ExpectedLog();
    return std::find(log.begin(), log.end(), u"BeginTrans") != log.end();
  }
};

TEST_P(EveryOperation, OperationSendsItsExactStatementsAndReturnsItsResult) {
  db::DBVilnor operations;
  Script(database, GetParam());
  database.ClearLog();
  EXPECT_EQ(GetParam().run(operations), GetParam().result);
  EXPECT_EQ(database.Log(), ExpectedLog());
  EXPECT_TRUE(Boxes().empty());
  EXPECT_FALSE(database.InTransaction());
}

TEST_P(EveryOperation, ErrorBoxOfEachOperationHasTheCriticalIconTitleAndOneButton) {
  db::DBVilnor operations;
  database.FailCall(1, kScriptedFailure);
  GetParam().run(operations);
  ASSERT_FALSE(dialogs.shown.empty());
  EXPECT_EQ(
      dialogs.shown[0],
      (platform::MessageBox{GetParam().calls[0].boxesWhenItFails[0], u"Vilnor Link connection",
                            platform::Icon::Critical, platform::Buttons::Ok}));
}

TEST_P(EveryOperation, ClosedConnectionShowsEachOperationsBoxAndReturnsEmpty) {
  db::DBVilnor operations;
  Script(database, GetParam());
  db::ReleaseShared();
  EXPECT_EQ(GetParam().run(operations), GetParam().emptyResult);
  EXPECT_FALSE(Boxes().empty());
  for (const auto& box : Boxes()) {
    EXPECT_TRUE(box.starts_with(u"3704 Operation is not allowed when the object is closed. in ") ||
                box.starts_with(u"3709 The connection cannot be used"))
        << automation::ToUtf8(box);
  }
}

// Each call fails in turn, including reads of a recordset.
TEST_P(EveryOperation, AnyFailedCallRollsBackBeforeItsBoxesAndReturnsEmpty) {
  WatchingDialogs watching(database);
  platform::Platform watched = fakes::With(ports, watching);
  platform::Use(watched);
  database.LogReads(true);
  for (std::size_t failing = 0;; ++failing) {
    watching.shown.clear();
    watching.rollbacksBefore.clear();
    db::DBVilnor operations;
    Script(database, GetParam());
    database.ClearLog();
    database.FailCall(failing + 1, kScriptedFailure);
    const automation::Value result = GetParam().run(operations);
    if (database.FailureIsPending()) {
      EXPECT_GE(failing, GetParam().calls.size());
      break;
    }
    const auto& log = database.Log();
    SCOPED_TRACE(automation::ToUtf8(log.at(failing)));
    EXPECT_EQ(watching.Texts(),
              ExpectedBoxes({log.begin(), log.begin() + static_cast<std::ptrdiff_t>(failing) + 1}));
    EXPECT_EQ(result, GetParam().emptyResult);
    EXPECT_EQ(database.LogOf(u"RollbackTrans").size(), HasTransaction() ? 1U : 0U);
    EXPECT_EQ(watching.rollbacksBefore,
              std::vector<std::size_t>(watching.shown.size(), HasTransaction() ? 1U : 0U));
    EXPECT_FALSE(database.InTransaction());
  }
}

TEST_P(EveryOperation, OperationWorksOnANewObjectAfterAnyFailedCall) {
  for (std::size_t failing = 0; failing < GetParam().calls.size(); ++failing) {
    SCOPED_TRACE(automation::ToUtf8(GetParam().calls[failing].entry));
    {
      db::DBVilnor broken;
      Script(database, GetParam());
      database.FailCall(failing + 1, kScriptedFailure);
      GetParam().run(broken);
    }
    dialogs.shown.clear();
    db::DBVilnor operations;
    Script(database, GetParam());
    EXPECT_EQ(GetParam().run(operations), GetParam().result);
    EXPECT_TRUE(Boxes().empty());
  }
}

std::string NameOf(const testing::TestParamInfo<Operation>& tested) {
  return tested.param.Name();
}

INSTANTIATE_TEST_SUITE_P(DBVilnor, EveryOperation, testing::ValuesIn(Operations()), NameOf);

// The operations that start with a query.
class EveryQuery : public EveryOperation {};

std::vector<Operation> Queries() {
  std::vector<Operation> queries;
  std::copy_if(Operations().begin(), Operations().end(), std::back_inserter(queries),
               [](const auto& operation) {
                 return operation.calls.at(0).entry.starts_with(u"Recordset.Open");
               });
  return queries;
}

// Maps the box of a failing query to that of a query that finds the shared recordset open.
std::u16string AlreadyOpenBox(const ExpectedCall& query) {
  const std::u16string& refused = query.boxesWhenItFails.at(0);
  return kAlreadyOpen + refused.substr(refused.rfind(u" in ") + 4);
}

TEST_P(EveryQuery, QueryWithoutARowIsEmptyAndLeavesTheRecordsetOpen) {
  {
    db::DBVilnor operations;
    EXPECT_EQ(GetParam().run(operations), GetParam().emptyResult);
    EXPECT_EQ(Boxes(), GetParam().boxesWithoutARow);
    EXPECT_TRUE(database.LogOf(u"Recordset.Close").empty());
    EXPECT_FALSE(database.InTransaction());
    Script(database, GetParam());
    for (int next = 1; next <= 2; ++next) {
      SCOPED_TRACE(next);
      dialogs.shown.clear();
      EXPECT_EQ(GetParam().run(operations), GetParam().emptyResult);
      EXPECT_EQ(Boxes(), std::vector<std::u16string>{AlreadyOpenBox(GetParam().calls[0])});
    }
  }
  dialogs.shown.clear();
  db::DBVilnor fresh;
  EXPECT_EQ(GetParam().run(fresh), GetParam().result);
  EXPECT_TRUE(Boxes().empty());
}

INSTANTIATE_TEST_SUITE_P(DBVilnor, EveryQuery, testing::ValuesIn(Queries()), NameOf);

// All 24 except InitConnection, which has no trap and is tested with the connection, and the number
// of table rows of each.
TEST(OperationTable, OperationTableHoldsEveryOperationOfTheInterface) {
  std::map<std::string, int> rows;
  for (const auto& operation : Operations()) {
    ++rows[operation.operation];
  }
  const std::map<std::string, int> expected = {{"DeleteFHP", 1},
                                               {"DeleteCase", 1},
                                               {"GetCaseIdByVilnorId", 1},
                                               {"CaseExists", 1},
                                               {"CaseExistsPID", 1},
                                               {"GetFHPById", 1},
                                               {"GetVilnorIdByFHPId", 1},
                                               {"GetBIDById", 1},
                                               {"GetRIDById", 1},
                                               {"GetPIDById", 1},
                                               {"GetCityByPostnr", 1},
                                               {"PreRequestCostExists", 1},
                                               {"GetPreRequestCostByFHPid", 1},
                                               {"AddNewCase", 2},
                                               {"UpdateCaseById", 1},
                                               {"UpdateCase", 2},
                                               {"GetPatientByPID", 1},
                                               {"GetPatientSSNByPID", 1},
                                               {"AddNewVilnorUser", 1},
                                               {"UpdateVilnorUser", 3},
                                               {"DeleteVilnorUser", 1},
                                               {"GetVilnorUserByPID", 1},
                                               {"GetVilnorUserByCode1", 1}};
  EXPECT_EQ(rows, expected);
}

// One row per call: operation, call, statement.
std::string TableInMarkdown() {
  std::string table = "| operation | call | statement |\n|---|---|---|\n";
  for (const auto& operation : Operations()) {
    for (const auto& call : operation.calls) {
      const std::string entry = automation::ToUtf8(call.entry);
      const auto colon = entry.find(": ");
      table += "| " + operation.Name() + " | " + entry.substr(0, colon) + " | " +
               (colon == std::string::npos ? "" : "`" + entry.substr(colon + 2) + "`") + " |\n";
    }
  }
  return table;
}

TEST(OperationTable, OperationTableMatchesTheDocument) {
  std::ifstream file(VILNOR_SOURCE_DIR "/docs/edge-cases/database.md", std::ios::binary);
  const std::string document{std::istreambuf_iterator<char>(file), {}};
  EXPECT_TRUE(document.ends_with("\n" + TableInMarkdown()))
      << "The table at the document's end is not this one:\n"
      << TableInMarkdown();
}

}  // namespace
}  // namespace unit
