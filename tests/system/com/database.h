// A host database for tests of the COM shell: its own SQLite file with the sample data.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/database.h"

namespace system_tests {

// A new file each time, deleted with the object. If VILNOR_TEST_DATABASE holds a connection string,
// that database, filled anew each time; VILNOR_TEST_PRODUCT names its product.
class TestDatabase {
 public:
  TestDatabase();
  TestDatabase(const TestDatabase&) = delete;
  TestDatabase& operator=(const TestDatabase&) = delete;
  ~TestDatabase();

  std::u16string ConnectionString() const;
  // Both over their own connection; the rows as schema::Rows returns them.
  void Execute(const std::u16string& statement) const;
  std::vector<std::u16string> Rows(const std::u16string& columns, const std::u16string& rest) const;

 private:
  std::unique_ptr<platform::Connection> Connect() const;

  std::filesystem::path file_;
};

}  // namespace system_tests
