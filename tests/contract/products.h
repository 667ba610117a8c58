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
  // Declaration of an amount that ADO shows as currency.
  std::u16string moneyType;
};

// SQLite always, in the file that VILNOR_TEST_SQLITE names or in a temporary one; PostgreSQL when
// VILNOR_TEST_POSTGRESQL holds a connection string.
std::vector<Product> Products();
// What Products() leaves out, and why.
std::vector<std::string> AbsentProducts();

// GoogleTest names an instance after its product.
void PrintTo(const Product& product, std::ostream* out);

}  // namespace contract
