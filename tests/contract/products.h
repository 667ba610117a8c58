// The databases that the contract is tested on, named by the environment.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace contract {

struct Product {
  std::string name;
  std::u16string connectionString;
  // Declaration of a column whose values the product generates.
  std::u16string identityType;
  // Part of the product's error text for an invalid statement.
  std::u16string syntaxText;
  // Declarations of an amount that ADO shows as currency, a date with time, an unlimited text and a
  // number of seven digits.
  std::u16string moneyType;
  std::u16string momentType = u"timestamp";
  std::u16string longTextType = u"text";
  std::u16string singleType = u"real";
  bool singlesAreDoubles = false;
};

// SQLite always, in the file that VILNOR_TEST_SQLITE names or in a temporary one; PostgreSQL and
// MariaDB when VILNOR_TEST_POSTGRESQL and VILNOR_TEST_MARIADB hold connection strings. If
// VILNOR_TEST_DATABASE holds one, only that, which is of the product that VILNOR_TEST_PRODUCT
// names.
std::vector<Product> Products();
// The products of that name.
std::vector<Product> ProductsNamed(const std::string& name);
// The products that Products() leaves out, and why.
std::vector<std::string> AbsentProducts();

// GoogleTest names an instance after its product.
void PrintTo(const Product& product, std::ostream* out);

}  // namespace contract
