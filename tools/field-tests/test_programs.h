// Runs the GoogleTest programs beside FieldTests.exe.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "field-tests/core/case.h"
#include "field-tests/core/rules.h"

namespace field_tests {

struct TestProgram {
  std::string name;
  std::wstring options;
};

// All of them.
const std::vector<TestProgram>& TestPrograms();

struct Folders {
  std::filesystem::path programs;
  std::filesystem::path work;
};

// Every test of the program, in its order. After a crash or a hang the program is started again
// with the tests that are left.
Cases RunTests(const TestProgram& program, const Folders& folders,
               const Circumstances& circumstances);

}  // namespace field_tests
