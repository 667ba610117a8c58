// The page that a person sends back: one self-contained HTML file.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "field-tests/core/case.h"
#include "field-tests/core/wine_outcomes.h"

namespace field_tests {

// A line of the table about the computer: what it is, and its value.
using Facts = std::vector<std::pair<std::string, std::string>>;

struct ProgramTime {
  std::string program;
  int seconds = 0;
};

struct Report {
  // "Vilnor 1.5.3, Commit 0123…"
  std::string component;
  std::string when;
  bool inWine = false;
  Facts computer;
  Cases cases;
  std::vector<ProgramTime> times;
  // What was changed on the computer, and that it was put back; or what was not.
  std::vector<std::string> notes;
};

std::string HtmlOf(const Report& report, const WineOutcomes& wine);

// "12 passed, 0 failed", and with ", 3 not run" if there are any.
std::string SummaryOf(const Cases& cases);

// "com_tests: 93 passed, 0 failed, 5 not run (12 s)"
std::string LineOf(const ProgramTime& time, const Cases& cases);

}  // namespace field_tests
