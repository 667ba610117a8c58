#pragma once

#include "windows/computer.h"

namespace benchmarks {

// A call through the component's dual interface beside the same call of the core, and what each
// takes from the heap.
void MeasureCalls(Computer& computer);

}  // namespace benchmarks
