// What is known from Wine, and what differed from it here.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "field-tests/core/case.h"

namespace field_tests {

// Lines "PROGRAM TEST: REASON", each a test that fails in Wine; every other one passes there. Empty
// lines and lines that begin with "#" are comments.
class WineOutcomes {
 public:
  explicit WineOutcomes(std::string_view file);
  Outcome Of(const Case& test) const;

 private:
  std::vector<std::string> failing_;
};

struct Difference {
  const Case* test;
  Outcome inWine;
};

// Of the tests that were run. They point into `cases`.
std::vector<Difference> DifferencesFromWine(const Cases& cases, const WineOutcomes& wine);

}  // namespace field_tests
