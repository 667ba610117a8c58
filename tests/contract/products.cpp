#include "contract/products.h"

#include <filesystem>
#include <ostream>
#include <random>
#include <system_error>
#include <utility>

#include "automation/text.h"
#include "contract/environment.h"

namespace contract {
namespace {

constexpr auto kSqliteVariable = "VILNOR_TEST_SQLITE";

// A database file of this process, removed when the process ends.
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

constexpr auto kPostgresqlVariable = "VILNOR_TEST_POSTGRESQL";
constexpr auto kMariadbVariable = "VILNOR_TEST_MARIADB";

struct Server {
  // Holds its connection string.
  const char* variable;
  Product product;
};

std::vector<Server> Servers() {
  return {{kPostgresqlVariable,
           {.name = "PostgreSQL",
            .connectionString = Setting(kPostgresqlVariable),
            .identityType = u"serial primary key",
            .syntaxText = u"syntax error",
            .moneyType = u"money"}},
          {kMariadbVariable,
           {.name = "MariaDB",
            .connectionString = Setting(kMariadbVariable),
            .identityType = u"integer auto_increment primary key",
            .syntaxText = u"error in your SQL syntax",
            .moneyType = u"decimal(19,4)",
            // Its timestamp begins in 1970, its text ends after 65,535 bytes, its real is a double.
            .momentType = u"datetime",
            .longTextType = u"mediumtext",
            .singleType = u"float"}}};
}

std::u16string SqliteFile() {
  static const ScratchFile scratch;
  const auto given = Setting(kSqliteVariable);
  return given.empty() ? scratch.Path() : given;
}

Product Sqlite() {
  return {.name = "SQLite",
          .connectionString = u"Driver=SQLite3;Database=" + SqliteFile(),
          .identityType = u"integer primary key autoincrement",
          .syntaxText = u"syntax error",
          .moneyType = u"currency",
          .singlesAreDoubles = true};
}

// Of a product without declarations, only its connection is known: the contract is not tested on
// it.
Product Given(const std::u16string& connectionString) {
  const std::string name = GivenProduct();
  Product given;
  given.name = name;
  for (const auto& [variable, product] : Servers()) {
    if (product.name == name) {
      given = product;
    }
  }
  if (name == "SQLite") {
    given = Sqlite();
  }
  given.connectionString = connectionString;
  return given;
}

}  // namespace

std::vector<Product> Products() {
  if (const auto given = GivenDatabase(); !given.empty()) {
    return {Given(given)};
  }
  std::vector<Product> products = {Sqlite()};
  for (auto& [variable, product] : Servers()) {
    if (!product.connectionString.empty()) {
      products.push_back(std::move(product));
    }
  }
  return products;
}

std::vector<Product> ProductsNamed(const std::string& name) {
  auto products = Products();
  std::erase_if(products, [&](const Product& product) { return product.name != name; });
  return products;
}

std::vector<std::string> AbsentProducts() {
  std::vector<std::string> absent;
  if (!GivenDatabase().empty()) {
    return absent;
  }
  for (const auto& [variable, product] : Servers()) {
    if (product.connectionString.empty()) {
      absent.push_back(product.name + ": " + variable + " holds no connection string.");
    }
  }
  return absent;
}

void PrintTo(const Product& product, std::ostream* out) {
  *out << product.name;
}

}  // namespace contract
