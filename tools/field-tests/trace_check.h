// Whether the component's trace arrives in Windows' own event tracing. Only a real Windows has it.
#pragma once

#include "field-tests/core/case.h"
#include "field-tests/test_programs.h"

namespace field_tests {

// Records a test's calls in a session of its own, and reads its file.
Case CheckTrace(const Folders& folders);

}  // namespace field_tests
