// Whether the component's trace arrives in Windows' own event tracing. Only a real Windows has it.
#pragma once

#include "field-tests/core/case.h"

namespace field_tests {

Case CheckTrace();

}  // namespace field_tests
