// The databases that the contract is held against, as the environment names them.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace contract {

struct Product {
  std::string name;
  std::u16string connectionString;
  // Declaration of a column whose values the product gives out.
  std::u16string identityType;
  // Part of the product's text for a statement that it cannot read.
  std::u16string syntaxText;
  // Declarations of an amount that ADO shows as currency, of a moment, of a text without a limit
  // and of a number of seven digits.
  std::u16string moneyType;
  std::u16string momentType = u"timestamp";
  std::u16string longTextType = u"text";
  std::u16string singleType = u"real";
  bool singlesAreDoubles = false;
};

// SQLite always, in the file that VILNOR_TEST_SQLITE names or in a temporary one; PostgreSQL and
// MariaDB when VILNOR_TEST_POSTGRESQL and VILNOR_TEST_MARIADB hold connection strings.
std::vector<Product> Products();
// Those among them that are called so.
std::vector<Product> ProductsNamed(const std::string& name);
// What Products() leaves out, and why.
std::vector<std::string> AbsentProducts();

// GoogleTest names an instance after its product.
void PrintTo(const Product& product, std::ostream* out);

}  // namespace contract
