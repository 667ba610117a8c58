#include "unit/fhp/host_database.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <system_error>
#include <unistd.h>

#include "automation/text.h"
#include "native/odbc_database.h"

namespace fhp {
namespace {

// Removed when the process ends.
class ScratchFile {
 public:
  ScratchFile() = default;
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  ~ScratchFile() {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
  }
  const std::filesystem::path path = std::filesystem::temp_directory_path() /
                                     ("vilnor-host-" + std::to_string(::getpid()) + ".db");
};

std::string FileText(const std::filesystem::path& path) {
  std::ifstream file(path);
  EXPECT_TRUE(file) << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string WithoutComments(const std::string& script) {
  std::string statements;
  std::size_t from = 0;
  while (from < script.size()) {
    const std::size_t end = std::min(script.find('\n', from), script.size() - 1) + 1;
    if (script.compare(from, 2, "--") != 0) {
      statements.append(script, from, end - from);
    }
    from = end;
  }
  return statements;
}

// Statements end with a semicolon at the end of a line.
void RunScript(platform::Connection& connection, const std::string& script) {
  const std::string statements = WithoutComments(script);
  for (std::size_t from = 0, end = 0; (end = statements.find(";\n", from)) != std::string::npos;
       from = end + 2) {
    connection.Execute(automation::FromUtf8(statements.substr(from, end - from)), -1);
  }
}

// A server that groups by hashing returns the estimate rows in its own order; one that sorts
// returns them like SQLite.
constexpr const char* kGroupBySorting =
    "DO $$ BEGIN EXECUTE 'ALTER DATABASE ' || quote_ident(current_database()) || "
    "' SET enable_hashagg = off'; END $$;\n";

}  // namespace

std::vector<HostProduct> HostProducts() {
  static const ScratchFile sqlite;
  std::vector<HostProduct> products = {
      {"SQLite", u"Driver=SQLite3;Database=" + sqlite.path.u16string(), "sqlite", ""}};
  if (const char* const server = std::getenv("VILNOR_TEST_POSTGRESQL"); server != nullptr) {
    products.push_back({"PostgreSQL", automation::FromUtf8(server), "postgresql", kGroupBySorting});
  }
  if (const char* const server = std::getenv("VILNOR_TEST_MARIADB"); server != nullptr) {
    products.push_back({"MariaDB", automation::FromUtf8(server), "mariadb", ""});
  }
  return products;
}

void LoadHostDatabase(const HostProduct& product) {
  const std::string tests = VILNOR_SOURCE_DIR "/tests";
  const auto connection = native::OdbcDatabase().NewConnection();
  connection->Open(product.connectionString, u"", u"", -1);
  RunScript(*connection, OutputOf("python3 '" + tests + "/schema/make_schema.py' --product " +
                                  product.schemaName));
  RunScript(*connection, FileText(tests + "/applications/applications.sql"));
  RunScript(*connection, product.settings);
}

std::string OutputOf(const std::string& command) {
  FILE* const pipe = ::popen(command.c_str(), "r");
  if (pipe == nullptr) {
    ADD_FAILURE() << "cannot run " << command;
    return {};
  }
  std::string output;
  std::array<char, 4096> bytes{};
  while (const std::size_t count = std::fread(bytes.data(), 1, bytes.size(), pipe)) {
    output.append(bytes.data(), count);
  }
  EXPECT_EQ(::pclose(pipe), 0) << command;
  return output;
}

}  // namespace fhp
