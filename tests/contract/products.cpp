#include "contract/products.h"

#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <random>
#include <system_error>

#include "automation/text.h"

namespace contract {
namespace {

constexpr auto kSqliteVariable = "VILNOR_TEST_SQLITE";
constexpr auto kPostgresqlVariable = "VILNOR_TEST_POSTGRESQL";

std::u16string Setting(const char* variable) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? std::u16string() : automation::FromUtf8(value);
}

// A database file of this process's own, removed when the process ends.
class ScratchFile {
 public:
  ScratchFile()
      : path_(std::filesystem::temp_directory_path() /
              ("vilnor-contract-" + std::to_string(std::random_device()()) + ".db")) {}
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  ~ScratchFile() {
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
  }
  std::u16string Path() const { return path_.u16string(); }

 private:
  std::filesystem::path path_;
};

std::u16string SqliteFile() {
  static const ScratchFile scratch;
  const auto given = Setting(kSqliteVariable);
  return given.empty() ? scratch.Path() : given;
}

}  // namespace

std::vector<Product> Products() {
  std::vector<Product> products;
  products.push_back({.name = "SQLite",
                      .connectionString = u"Driver=SQLite3;Database=" + SqliteFile(),
                      .identityType = u"integer primary key autoincrement",
                      .syntaxText = u"syntax error",
                      .moneyType = u"currency"});
  if (const auto postgresql = Setting(kPostgresqlVariable); !postgresql.empty()) {
    products.push_back({.name = "PostgreSQL",
                        .connectionString = postgresql,
                        .identityType = u"serial primary key",
                        .syntaxText = u"syntax error",
                        .moneyType = u"money"});
  }
  return products;
}

std::vector<std::string> AbsentProducts() {
  if (!Setting(kPostgresqlVariable).empty()) {
    return {};
  }
  return {std::string("PostgreSQL: ") + kPostgresqlVariable + " holds no connection string."};
}

void PrintTo(const Product& product, std::ostream* out) {
  *out << product.name;
}

}  // namespace contract
