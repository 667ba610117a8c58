#include "field-tests/core/gtest_output.h"

#include <optional>

#include "field-tests/core/text.h"

namespace field_tests {
namespace {

// The name behind a mark such as "[       OK ] ", which other output may precede on the line.
std::optional<std::string> After(const std::string& line, std::string_view mark) {
  const auto at = line.find(mark);
  if (at == std::string::npos) {
    return std::nullopt;
  }
  const std::string rest = line.substr(at + mark.size());
  return rest.substr(0, rest.find_first_of(", "));
}

std::optional<Outcome> EndOf(const std::string& line, const std::string& test) {
  if (After(line, "[       OK ] ") == test) {
    return Outcome::Passed;
  }
  if (After(line, "[  FAILED  ] ") == test) {
    return Outcome::Failed;
  }
  if (After(line, "[  SKIPPED ] ") == test) {
    return Outcome::NotRun;
  }
  return std::nullopt;
}

}  // namespace

std::vector<std::string> ListedTests(std::string_view output) {
  std::vector<std::string> names;
  std::string suite;
  for (const auto& line : LinesOf(output)) {
    const std::string word = Trimmed(line.substr(0, line.find('#')));
    if (line.starts_with("  ") && !suite.empty()) {
      names.push_back(suite + word);
    } else {
      suite = word.ends_with('.') ? word : "";
    }
  }
  return names;
}

TestLog ReadTestLog(const std::string& program, std::string_view output) {
  TestLog log;
  for (const auto& line : LinesOf(output)) {
    if (const auto begun = After(line, "[ RUN      ] ")) {
      log.unfinished = *begun;
      log.lastWords.clear();
    } else if (log.unfinished.empty()) {
      continue;
    } else if (const auto end = EndOf(line, log.unfinished)) {
      log.ended.push_back({.program = program,
                           .name = log.unfinished,
                           .outcome = *end,
                           .text = *end == Outcome::Passed ? "" : Trimmed(log.lastWords)});
      log.unfinished.clear();
      log.lastWords.clear();
    } else {
      log.lastWords += line + "\n";
    }
  }
  return log;
}

}  // namespace field_tests
