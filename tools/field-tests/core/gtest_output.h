// What GoogleTest programs print. Their text is read, not their report file, because a program that
// crashes or hangs leaves no file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "field-tests/core/case.h"

namespace field_tests {

// The names in the output of --gtest_list_tests, in its order.
std::vector<std::string> ListedTests(std::string_view output);

struct TestLog {
  Cases ended;
  // The test that began and did not end, "" if there is none, and what it printed.
  std::string unfinished;
  std::string lastWords;
};

TestLog ReadTestLog(const std::string& program, std::string_view output);

}  // namespace field_tests
