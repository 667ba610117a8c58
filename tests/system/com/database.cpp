#include "system/com/database.h"

#include <string>

#include "automation/text.h"
#include "com/wide_text.h"
#include "schema/host_schema.h"
#include "schema/rows.h"
#include "windows/ado_database.h"

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
  const auto connection = Connect();
  connection->BeginTrans();
  for (const auto& statement : schema::HostSchemas().at("sqlite")) {
    connection->Execute(automation::FromUtf8(statement), platform::kOptionsUnspecified);
  }
  connection->CommitTrans();
}

TestDatabase::~TestDatabase() {
  std::error_code ignored;
  std::filesystem::remove(file_, ignored);
}

std::u16string TestDatabase::ConnectionString() const {
  return u"Driver=SQLite3;Database=" + com::FromWide(file_.wstring());
}

void TestDatabase::Execute(const std::u16string& statement) const {
  Connect()->Execute(statement, platform::kOptionsUnspecified);
}

std::vector<std::u16string> TestDatabase::Rows(const std::u16string& columns,
                                               const std::u16string& rest) const {
  return schema::Rows(*Connect(), columns, rest);
}

std::unique_ptr<platform::Connection> TestDatabase::Connect() const {
  auto connection = windows::AdoDatabase().NewConnection();
  connection->Open(ConnectionString(), u"", u"", platform::kOptionsUnspecified);
  return connection;
}

}  // namespace system_tests
