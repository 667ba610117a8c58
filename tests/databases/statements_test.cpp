// The component's statements as a MariaDB server gets them. The product knows `@@Identity`, so they
// are unchanged except for month-first dates.
#include <algorithm>
#include <functional>

#include "automation/text.h"
#include "databases/clinic.h"
#include "fakes/intercepted_database.h"

namespace databases {
namespace {

using Texts = std::vector<std::u16string>;

class RecordingDatabase : public fakes::InterceptedDatabase {
 public:
  using InterceptedDatabase::InterceptedDatabase;
  void On(fakes::DatabaseCall /*call*/, const std::u16string& statement,
          const std::function<void()>& work) override {
    if (!statement.empty()) {
      statements.push_back(statement);
    }
    work();
  }
  Texts statements;
};

// The server's log of all statements, on while an object of this class lives.
class ServersLog {
 public:
  explicit ServersLog(std::function<void(const std::u16string&)> run) : run_(std::move(run)) {
    // The log is the server's, which other runs of this test share.
    run_(u"DO GET_LOCK('servers log', 60)");
    run_(u"SET GLOBAL log_output = 'TABLE'");
    run_(u"TRUNCATE mysql.general_log");
    run_(u"SET GLOBAL general_log = ON");
  }
  ServersLog(const ServersLog&) = delete;
  ServersLog& operator=(const ServersLog&) = delete;
  ~ServersLog() {
    run_(u"SET GLOBAL general_log = OFF");
    run_(u"DO RELEASE_LOCK('servers log')");
  }

 private:
  std::function<void(const std::u16string&)> run_;
};

class StatementsOnMariadb : public Clinic {
 protected:
  StatementsOnMariadb() { platform::Use(recorded_); }

  // Every statement of the component in all its operations, once each.
  Texts RunEveryOperation(std::int16_t dbType) {
    session.gDbType = dbType;
    recording_.statements.clear();
    db::DBVilnor operations;
    operations.GetFHPById(77);
    operations.GetBIDById(12);
    operations.GetRIDById(3);
    operations.GetPIDById(4711);
    operations.GetPreRequestCostByFHPid(78);
    operations.GetPatientByPID(4711);
    operations.GetPatientSSNByPID(4711);
    operations.GetCaseIdByVilnorId(102);
    operations.CaseExists(71, 1);
    operations.CaseExistsPID(4712, 9, u"2072");
    operations.GetVilnorIdByFHPId(71);
    operations.GetCityByPostnr(41301);
    operations.PreRequestCostExists(78);
    operations.GetVilnorUserByPID(5012);
    operations.GetVilnorUserByCode1(-32000);
    operations.AddNewVilnorUser(4711, u"'åsa'");
    operations.UpdateVilnorUser(4711, u"'märta'");
    operations.DeleteVilnorUser(4711);
    operations.AddNewCase(4711, 12, 3, u"VL-9", 77, 1, 5, u"åsa", u"2026-077");
    operations.AddNewCase(4713, 13, 4, u"VL-8", 4713, 9, 5, u"åsa");
    operations.UpdateCaseById(102, u"3072", 1);
    Run(u"UPDATE Journal SET Tekst = '!' WHERE ID IN (501, 502)");
    operations.UpdateCase(u"3071", 71, 1, 1);
    operations.UpdateCase(u"3073", 4712, 1, 9);
    operations.DeleteFHP(71);
    operations.DeleteCase(u"2073");
    EXPECT_EQ(Boxes(), Texts());
    Texts written = recording_.statements;
    std::sort(written.begin(), written.end());
    written.erase(std::unique(written.begin(), written.end()), written.end());
    return written;
  }
  // What this test's database got since the log began.
  Texts Received() {
    return Rows(u"DISTINCT argument",
                u"mysql.general_log WHERE command_type IN ('Query', 'Execute') AND thread_id IN "
                u"(SELECT thread_id FROM mysql.general_log WHERE command_type = 'Connect' AND "
                u"argument LIKE CONCAT('% on ', DATABASE(), ' using %'))");
  }

 private:
  RecordingDatabase recording_{*real};
  platform::Platform recorded_ = fakes::With(platform, recording_);
};

bool HasADate(const std::u16string& statement) {
  return statement.find(u"11-16-2026 14:05:00") != std::u16string::npos;
}

// Both database types: dates between # and between apostrophes.
TEST_P(StatementsOnMariadb, StatementsReachTheServerUnchangedExceptMonthFirstDates) {
  const std::int16_t kinds[] = {1, 2};
  for (const auto dbType : kinds) {
    MakeHostDatabase();
    const ServersLog log([this](const std::u16string& statement) { Run(statement); });
    const Texts written = RunEveryOperation(dbType);
    const Texts received = Received();
    Texts translated;
    std::copy_if(written.begin(), written.end(), std::back_inserter(translated),
                 [&](const std::u16string& statement) {
                   return std::find(received.begin(), received.end(), statement) == received.end();
                 });
    Texts withDates;
    std::copy_if(written.begin(), written.end(), std::back_inserter(withDates), HasADate);
    EXPECT_EQ(translated, withDates);
    EXPECT_EQ(withDates.size(), 4U) << "two inserts a new case: its link and its journal line";
    EXPECT_THAT(written, testing::Contains(std::u16string(u"Select @@Identity")));
    for (std::u16string statement : withDates) {
      const auto date = statement.find(u"11-16-2026 14:05:00");
      statement.replace(date - 1, 21, u"'2026-11-16 14:05:00'");
      EXPECT_THAT(received, testing::Contains(statement));
    }
  }
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(StatementsOnMariadb);  // without that server
INSTANTIATE_FOR(contract::ProductsNamed("MariaDB"), StatementsOnMariadb);

}  // namespace
}  // namespace databases
