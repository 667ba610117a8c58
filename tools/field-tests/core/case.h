// One check of a field run, and how it ended. All texts of the core are UTF-8.
#pragma once

#include <string>
#include <vector>

namespace field_tests {

enum class Outcome { Passed, Failed, NotRun };

struct Case {
  std::string program;
  std::string name;
  Outcome outcome = Outcome::NotRun;
  // What a failed case printed; why one was not run.
  std::string text;
};

using Cases = std::vector<Case>;

int CountOf(const Cases& cases, Outcome outcome);

// "passed", "failed" or "not run".
const char* WordOf(Outcome outcome);

}  // namespace field_tests
