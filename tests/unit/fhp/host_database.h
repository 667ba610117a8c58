// The host's database for tests on real products: schema and sample applications in each.
#pragma once

#include <string>
#include <vector>

namespace fhp {

struct HostProduct {
  std::string name;
  std::u16string connectionString;
  // Its name for tests/schema/make_schema.py.
  std::string schemaName;
  // Statements that make later connections return rows in a known order.
  std::string settings;
};

// SQLite always, in a temporary file that is removed with the process; PostgreSQL
// and MariaDB when VILNOR_TEST_POSTGRESQL and VILNOR_TEST_MARIADB hold connection strings.
std::vector<HostProduct> HostProducts();

// Recreates the host's tables with the rows of tests/schema and tests/applications.
void LoadHostDatabase(const HostProduct& product);

// A command's standard output; a failed command fails the test.
std::string OutputOf(const std::string& command);

}  // namespace fhp
