// Whether the component's trace arrives in Windows' own event tracing. Only a real Windows has it.
#pragma once

#include "field-tests/core/case.h"
#include "field-tests/core/rules.h"
#include "field-tests/test_programs.h"

namespace field_tests {

// Records a test's calls in a tracing session, and reads the session's file.
Case CheckTrace(const Folders& folders, const Circumstances& circumstances);

// A run that is killed leaves the session, for the whole computer.
void EndTraceSession();

}  // namespace field_tests
