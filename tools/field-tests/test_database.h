// The person's database: recognised, filled, emptied.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "field-tests/core/trip.h"
#include "platform/database.h"

namespace field_tests {

// Why a database cannot be used, for the person.
class Unusable : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

class TestDatabase {
 public:
  // Raises Unusable for one that cannot be opened, is of no known product, or has a table of the
  // host's already, unless an earlier run left it.
  explicit TestDatabase(std::u16string connectionString);
  // Removes the tables.
  ~TestDatabase();
  TestDatabase(const TestDatabase&) = delete;
  TestDatabase& operator=(const TestDatabase&) = delete;

  const std::u16string& connectionString() const { return connectionString_; }
  // As in Circumstances.
  const std::string& product() const { return product_; }
  // InitVilnor's: 1 for dates written as #...#, 2 for '...'.
  int DbType() const { return product_ == "SQLite" || product_ == "Access" ? 1 : 2; }

  // New tables with the sample data.
  void Fill();
  // What the component writes.
  std::vector<Table> Written();
  // False if a table could not be removed.
  bool Empty();

 private:
  std::u16string connectionString_;
  std::unique_ptr<platform::Connection> connection_;
  std::string product_;
  bool isOurs_ = false;
};

// Creates an empty Access database with the parts of Windows itself (Jet) and returns its
// connection string. Raises Unusable.
std::u16string NewAccessDatabase(const std::wstring& file);

}  // namespace field_tests
