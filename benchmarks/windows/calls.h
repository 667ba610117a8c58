#pragma once

#include "windows/computer.h"

namespace benchmarks {

// A call through the component's dual interface compared with the same call of the core, and their
// heap allocations.
void MeasureCalls(Computer& computer);

}  // namespace benchmarks
