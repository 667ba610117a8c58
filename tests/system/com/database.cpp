#include "system/com/database.h"

#include <string>

#include "windows/ado_database.h"
#include "windows/wide_text.h"

namespace system_tests {
namespace {

std::filesystem::path NewFile() {
  static int count = 0;
  return std::filesystem::temp_directory_path() /
         (L"com_tests" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++count) +
          L".db");
}

}  // namespace

TestDatabase::TestDatabase() : file_(NewFile()) {
  std::filesystem::remove(file_);
  Execute(
      u"CREATE TABLE Vilnor (VilnorId integer primary key autoincrement, PID integer, BID integer, "
      u"RID integer, FHP_ID integer, CaseId varchar(50), CaseType integer, Journal_ID integer, "
      u"StatusCode integer, VilnorUser varchar(50), RegDate timestamp)");
  Execute(
      u"CREATE TABLE Journal (ID integer primary key autoincrement, PID integer, "
      u"Tekst varchar(255), BID integer, RID integer, Dato timestamp, KODE integer, "
      u"Status varchar(1), Fakturert integer, RefTBID integer)");
  Execute(
      u"CREATE TABLE Pasient (ID integer primary key, Fornavn varchar(50), Navn varchar(50), "
      u"fDato timestamp, PersNr varchar(4))");
  Execute(u"INSERT INTO Pasient VALUES (4711, 'Åsa', 'Öberg', '1945-01-01 00:00:00', '1234')");
}

TestDatabase::~TestDatabase() {
  std::error_code ignored;
  std::filesystem::remove(file_, ignored);
}

std::u16string TestDatabase::ConnectionString() const {
  return u"Driver=SQLite3;Database=" + windows::FromWide(file_.wstring());
}

void TestDatabase::Execute(const std::u16string& statement) const {
  windows::AdoDatabase database;
  const auto connection = database.NewConnection();
  connection->SetConnectionString(ConnectionString());
  connection->Open(u"", u"", u"", platform::kOptionsUnspecified);
  connection->Execute(statement, platform::kOptionsUnspecified);
}

}  // namespace system_tests
