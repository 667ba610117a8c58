// AddNewCase compared with its bare statements over ODBC, both on PostgreSQL.
#include <array>
#include <benchmark/benchmark.h>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "automation/text.h"
#include "db/db_vilnor.h"
#include "native/practice.h"
#include "odbc/api.h"
#include "odbc/handle.h"

namespace {

using benchmarks::Clinic;

constexpr std::int32_t kPatient = benchmarks::kFirstKey + 7;

const benchmarks::PracticeDatabase& Server() {
  for (const auto& database : benchmarks::PracticeDatabases()) {
    if (database.product == "PostgreSQL") {
      return database;
    }
  }
  throw std::runtime_error("./bench has made no database on PostgreSQL");
}

using Wide = std::vector<SQLWCHAR>;

Wide ToWide(const std::u16string& text) {
  Wide wide(text.begin(), text.end());
  wide.push_back(0);
  return wide;
}

// A short program that knows only its statements.
class BareOdbc {
 public:
  BareOdbc() {
    Must(SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment_));
    Must(SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION,
                       reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0));
    Must(SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_));
    Wide text = ToWide(Server().connectionString);
    Must(SQLDriverConnectW(connection_, nullptr, text.data(), SQL_NTS, nullptr, 0, nullptr,
                           SQL_DRIVER_NOPROMPT));
  }
  BareOdbc(const BareOdbc&) = delete;
  BareOdbc& operator=(const BareOdbc&) = delete;
  ~BareOdbc() {
    SQLDisconnect(connection_);
    SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    SQLFreeHandle(SQL_HANDLE_ENV, environment_);
  }

  void AddNewCase(const std::u16string& caseId) {
    AutoCommit(SQL_AUTOCOMMIT_OFF);
    Run(u"Insert into Vilnor (PID, BID, RID, CaseId, CaseType, Journal_ID, StatusCode, "
        u"VilnorUser, RegDate) VALUES (100007,100000,100000,'" +
        caseId + u"',9,0,5,'bjorn.ek','11-16-2026 14:05:00')");
    const std::u16string vilnorId = Key();
    Run(u"INSERT INTO Journal (PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert, RefTBID) values "
        u"(100007,'Ärende upprättat i Vilnor Link ref.nr " +
        caseId + u"',100000,100000,'11-16-2026 14:05:00',22302,'U',0, " + vilnorId + u")");
    const std::u16string journalId = Key();
    Run(u"UPDATE Vilnor set Journal_ID = " + journalId + u" WHERE VilnorId = " + vilnorId);
    Must(SQLEndTran(SQL_HANDLE_DBC, connection_, SQL_COMMIT));
    AutoCommit(SQL_AUTOCOMMIT_ON);
  }

 private:
  static void Must(SQLRETURN result) {
    if (!SQL_SUCCEEDED(result)) {
      throw std::runtime_error("bare ODBC failed");
    }
  }

  void AutoCommit(SQLULEN mode) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface's own way
    Must(
        SQLSetConnectAttr(connection_, SQL_ATTR_AUTOCOMMIT, reinterpret_cast<SQLPOINTER>(mode), 0));
  }

  // The statement stays open for its result.
  SQLHSTMT Start(const std::u16string& text) {
    SQLHSTMT statement = nullptr;
    Must(SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement));
    Wide wide = ToWide(text);
    Must(SQLExecDirectW(statement, wide.data(), SQL_NTS));
    return statement;
  }

  void Run(const std::u16string& text) { SQLFreeHandle(SQL_HANDLE_STMT, Start(text)); }

  std::u16string Key() {
    const SQLHSTMT statement = Start(u"Select lastval()");
    std::array<SQLWCHAR, 32> key{};
    SQLLEN bytes = 0;
    Must(SQLFetch(statement));
    Must(SQLGetData(statement, 1, SQL_C_WCHAR, key.data(), sizeof(key), &bytes));
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    return {key.begin(), key.begin() + bytes / static_cast<SQLLEN>(sizeof(SQLWCHAR))};
  }

  SQLHENV environment_ = nullptr;
  SQLHDBC connection_ = nullptr;
};

std::u16string NextCaseId() {
  static std::int32_t last = 27'000'000;
  return automation::Decimal10(++last);
}

// One case at a time, removed again outside the measured time.
template <class AddCase>
void Measure(benchmark::State& state, Clinic& clinic, AddCase addCase) {
  for (auto _ : state) {
    const std::u16string caseId = NextCaseId();
    const auto start = std::chrono::steady_clock::now();
    addCase(caseId);
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
    state.SetIterationTime(time.count());
    const std::u16string chosen = u" WHERE CaseId = '" + caseId + u"'";
    clinic.Run(u"DELETE FROM Journal WHERE ID IN (SELECT Journal_ID FROM Vilnor" + chosen + u")");
    clinic.Run(u"DELETE FROM Vilnor" + chosen);
  }
  if (const std::string complaint = clinic.FirstComplaint(); !complaint.empty()) {
    state.SkipWithError(complaint.c_str());
  }
}

void VilnorAdds(benchmark::State& state) {
  static Clinic clinic(Server());
  const Clinic::Inside inside(clinic);
  static const auto vilnor = std::make_unique<db::DBVilnor>();
  Measure(state, clinic, [](const std::u16string& caseId) {
    vilnor->AddNewCase(kPatient, 100'000, 100'000, caseId, 0, 9, 5, u"bjorn.ek");
  });
}

void BareOdbcAdds(benchmark::State& state) {
  static Clinic clinic(Server());
  static BareOdbc odbc;
  Measure(state, clinic, [](const std::u16string& caseId) { odbc.AddNewCase(caseId); });
}

constexpr int kCases = 10;
BENCHMARK(VilnorAdds)->Name("new-case/Vilnor")->UseManualTime()->Iterations(kCases);
BENCHMARK(BareOdbcAdds)->Name("new-case/bare ODBC")->UseManualTime()->Iterations(kCases);

}  // namespace
