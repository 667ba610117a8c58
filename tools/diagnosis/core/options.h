// The command line of VilnorCheck.exe, and its exit codes.
#pragma once

#include <string>
#include <vector>

#include "diagnosis/core/finding.h"

namespace diagnosis {

struct Options {
  enum class Output { Window, Text, Json, Help };
  Output output = Output::Window;
  // Whether to ask for a connection string and test the database.
  bool database = false;
  // Whether a word is no option. The word is not kept: it may be a password.
  bool wrong = false;
};

// Options begin with "/" or "-", in whatever letter case.
Options ReadOptions(const std::vector<std::u16string>& words);

inline constexpr int kNotDone = 3;
// 0 fine, 1 warnings, 2 faults.
int ExitCodeOf(State worst);

extern const char16_t* const kHelp;

}  // namespace diagnosis
