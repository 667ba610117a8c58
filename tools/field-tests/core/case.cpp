#include "field-tests/core/case.h"

#include <algorithm>

namespace field_tests {

int CountOf(const Cases& cases, Outcome outcome) {
  return static_cast<int>(std::count_if(cases.begin(), cases.end(),
                                        [&](const Case& each) { return each.outcome == outcome; }));
}

const char* WordOf(Outcome outcome) {
  switch (outcome) {
    case Outcome::Passed:
      return "passed";
    case Outcome::Failed:
      return "failed";
    case Outcome::NotRun:
      break;
  }
  return "not run";
}

}  // namespace field_tests
