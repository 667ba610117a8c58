#include "field-tests/core/wine_outcomes.h"

#include <algorithm>

#include "field-tests/core/text.h"

namespace field_tests {

WineOutcomes::WineOutcomes(std::string_view file) {
  for (const auto& line : LinesOf(file)) {
    if (!line.empty() && line.front() != '#') {
      failing_.push_back(line.substr(0, line.find(": ")));
    }
  }
}

Outcome WineOutcomes::Of(const Case& test) const {
  const bool fails =
      std::find(failing_.begin(), failing_.end(), test.program + " " + test.name) != failing_.end();
  return fails ? Outcome::Failed : Outcome::Passed;
}

std::vector<Difference> DifferencesFromWine(const Cases& cases, const WineOutcomes& wine) {
  std::vector<Difference> differences;
  for (const auto& test : cases) {
    const Outcome inWine = wine.Of(test);
    if (test.outcome != Outcome::NotRun && test.outcome != inWine) {
      differences.push_back({.test = &test, .inWine = inWine});
    }
  }
  return differences;
}

}  // namespace field_tests
