// The command line of run.cmd.
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace field_tests {

struct Options {
  bool help = false;
  bool quick = false;
  // Without the tests that need administrator rights, although they are there.
  bool asUser = false;
  bool restoreOnly = false;
  // The database: a connection string, or empty.
  std::string connection;
  // Instead: one that the field tests create.
  bool newAccess = false;
};

class UsageError : public std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Raises UsageError.
Options ParseOptions(const std::vector<std::string>& words);

// What a person types when asked for the database: a connection string, with or without quotation
// marks, "access", or nothing. Raises UsageError.
void SetDatabase(Options& options, const std::string& answer);

extern const char* const kUsage;

}  // namespace field_tests
