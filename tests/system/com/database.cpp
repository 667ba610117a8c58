#include "system/com/database.h"

#include <string>

#include "com/wide_text.h"
#include "contract/environment.h"
#include "schema/fill.h"
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
  const std::string product = contract::GivenProduct();
  schema::FillHostDatabase(*Connect(), product.empty() ? "sqlite" : product);
}

TestDatabase::~TestDatabase() {
  std::error_code ignored;
  std::filesystem::remove(file_, ignored);
}

std::u16string TestDatabase::ConnectionString() const {
  const auto given = contract::GivenDatabase();
  return given.empty() ? u"Driver=SQLite3;Database=" + com::FromWide(file_.wstring()) : given;
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
