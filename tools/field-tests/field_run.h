// A whole field run.
#pragma once

#include <filesystem>

#include "field-tests/core/options.h"

namespace field_tests {

enum ExitCode : int { kAllPassed = 0, kSomethingFailed = 1, kCouldNotBegin = 2 };

// `programs` is the folder of FieldTests.exe.
int Run(const Options& options, const std::filesystem::path& programs);

}  // namespace field_tests
