// The database test: tables and columns by empty queries, and nothing of the connection string in
// the report.
#include <fstream>
#include <gmock/gmock.h>
#include <regex>
#include <sstream>

#include "diagnosis/core/connection_string.h"
#include "diagnosis/core/host_tables.h"
#include "unit/diagnosis/fixture.h"

namespace diagnosis_test {
namespace {

using testing::HasSubstr;
using testing::Not;

using DatabaseDiagnosis = DiagnosisTest;
using Tables = std::map<std::string, std::vector<std::string>>;

automation::AutomationError Refusal(const std::u16string& text = u"Invalid object name.") {
  return {-2147217865, u"Provider", text};
}

Tables TablesOfSampleSchema() {
  std::ifstream file(VILNOR_SOURCE_DIR "/tests/schema/host_schema.sql");
  std::stringstream text;
  text << file.rdbuf();
  const std::string schema = text.str();
  const std::regex table(R"(CREATE TABLE (\w+) \(([^;]*)\);)");
  const std::regex column(R"(\n  (\w+))");
  Tables tables;
  for (std::sregex_iterator each(schema.begin(), schema.end(), table), end; each != end; ++each) {
    const std::string columns = (*each)[2];
    for (std::sregex_iterator one(columns.begin(), columns.end(), column); one != end; ++one) {
      tables[(*each)[1]].push_back((*one)[1]);
    }
  }
  return tables;
}

TEST_F(DatabaseDiagnosis, HealthyDatabaseHasNoFinding) {
  const Findings findings = DiagnoseDatabase();
  EXPECT_EQ(Problems(findings), Ids{});
  EXPECT_EQ(findings.size(), 2U);
  EXPECT_EQ(database.AliveConnections(), 0);
}

TEST_F(DatabaseDiagnosis, OnlyQueriesWithoutRowsAreRun) {
  database.FailStatement(u"SELECT ID, PID, Tekst", Refusal());
  DiagnoseDatabase();
  const auto opened = database.LogOf(u"Recordset.Open");
  EXPECT_GT(opened.size(), 20U);
  for (const auto& call : opened) {
    EXPECT_THAT(automation::ToUtf8(call), HasSubstr(": SELECT "));
    EXPECT_TRUE(call.ends_with(u" WHERE 1 = 0"));
  }
  EXPECT_EQ(database.LogOf(u"Connection.Execute"), std::vector<std::u16string>{});
  EXPECT_EQ(database.LogOf(u"Connection.BeginTrans"), std::vector<std::u16string>{});
}

TEST_F(DatabaseDiagnosis, RefusedConnectionIsOneFault) {
  database.FailCall(1, Refusal(u"Login failed for user anna"));
  const Findings findings = DiagnoseDatabase();
  EXPECT_EQ(Problems(findings), Ids{"database fault"});
  EXPECT_EQ(findings.size(), 1U);
}

TEST_F(DatabaseDiagnosis, MissingTableAndColumnsAreNamed) {
  database.FailStatement(u"SELECT * FROM Worker", Refusal());
  database.FailStatement(u"SELECT PID, UserName FROM VilnorPasient", Refusal());
  database.FailStatement(u"SELECT UserName FROM VilnorPasient", Refusal());
  const Findings findings = DiagnoseDatabase();
  EXPECT_EQ(Problems(findings), Ids{"database-tables fault"});
  EXPECT_EQ(TextOf(findings, u"database-tables"),
            "Saknas, eller får inte läsas av användaren: Worker; VilnorPasient (UserName)");
}

TEST_F(DatabaseDiagnosis, ProvidersTextIsGivenWithoutThePassword) {
  database.FailCall(1, Refusal(u"Cannot open KESTRA with HEMLIGT. Wait."));
  const Findings findings = DiagnoseDatabase();
  const std::string text = TextOf(findings, u"database");
  EXPECT_THAT(text, HasSubstr("Cannot open *** with ***. Wait."));
}

TEST(ConnectionStrings, EveryValueIsMaskedInWhateverForm) {
  using diagnosis::WithoutValuesOf;
  EXPECT_EQ(WithoutValuesOf(u"UID=anna;PWD={a;b}", u"anna, {a;b}, a;b"), u"***, ***, ***");
  EXPECT_EQ(WithoutValuesOf(u"Password = \"x y\" ;Server=s1", u"x y at S1"), u"*** at ***");
  EXPECT_EQ(WithoutValuesOf(u"hemligt", u"hemligt is no connection"), u"*** is no connection");
  EXPECT_EQ(WithoutValuesOf(u"PWD=a=b", u"a=b"), u"***");
  EXPECT_EQ(WithoutValuesOf(u"PWD={a}}b;c};UID=u", u"{a}}b;c}, a}}b;c, a}b;c."), u"***, ***, ***.");
  EXPECT_EQ(WithoutValuesOf(u"PWD='a''b'", u"a''b, a'b."), u"***, ***.");
  EXPECT_EQ(WithoutValuesOf(u"PWD=\"a\"\"b\"", u"a\"\"b, a\"b."), u"***, ***.");
  EXPECT_EQ(WithoutValuesOf(u"", u"nothing"), u"nothing");
}

TEST(HostTables, AreThoseOfTheSampleSchema) {
  Tables tables;
  for (const auto& table : diagnosis::HostTables()) {
    auto& columns = tables[automation::ToUtf8(table.name)];
    for (const auto column : table.columns) {
      columns.push_back(automation::ToUtf8(column));
    }
  }
  EXPECT_EQ(tables, TablesOfSampleSchema());
}

}  // namespace
}  // namespace diagnosis_test
