// The host's database as the tests' real one: schema and sample applications in each product.
#pragma once

#include <string>
#include <vector>

namespace fhp {

struct HostProduct {
  std::string name;
  std::u16string connectionString;
  // Its name for tests/schema/make_schema.py.
  std::string schemaName;
  // Statements that make it return its rows in a known order, for connections opened later.
  std::string settings;
};

// SQLite always, in a temporary file that is removed with the process; PostgreSQL
// and MariaDB when VILNOR_TEST_POSTGRESQL and VILNOR_TEST_MARIADB hold connection strings.
std::vector<HostProduct> HostProducts();

// Makes the host's tables anew, with the rows of tests/schema and tests/applications.
void LoadHostDatabase(const HostProduct& product);

// What a command writes to its standard output; a failed command fails the test.
std::string OutputOf(const std::string& command);

}  // namespace fhp
