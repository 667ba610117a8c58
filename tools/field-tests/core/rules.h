// Which tests run on a person's computer, and why the others do not.
#pragma once

#include <string>
#include <vector>

namespace field_tests {

// What this run may do and has.
struct Circumstances {
  // The tests may write what the link program's installer writes.
  bool machineKeys = false;
  // A practice program or Vilnor Link is installed and cannot be set aside.
  bool inUse = false;
  // Why no trips can be made, "" if they can.
  std::string tripProblem;
  // "SQLite", "Access", "SQLServer", "PostgreSQL", "MariaDB"; "" without a database.
  std::string product;
  // Only a sample of the tests.
  bool quick = false;
};

// "" for a test that runs; otherwise the reason, which says what would be needed.
std::string WhyNotRun(const std::string& program, const std::string& test,
                      const Circumstances& circumstances);

// The rules that match none of the program's tests: a renamed test may run where it must not.
std::vector<std::string> StaleRules(const std::string& program,
                                    const std::vector<std::string>& tests);

}  // namespace field_tests
