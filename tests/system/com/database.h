// A small host database for tests of the shell: an SQLite file of its own with the link tables.
#pragma once

#include <filesystem>
#include <string>

#include "platform/database.h"

namespace system_tests {

// A new file each time; gone with the object.
class TestDatabase {
 public:
  TestDatabase();
  TestDatabase(const TestDatabase&) = delete;
  TestDatabase& operator=(const TestDatabase&) = delete;
  ~TestDatabase();

  std::u16string ConnectionString() const;
  // Runs a statement over a connection of its own.
  void Execute(const std::u16string& statement) const;

 private:
  std::filesystem::path file_;
};

}  // namespace system_tests
