#pragma once

#include "windows/computer.h"

namespace benchmarks {

// The scan of per-tooth texts compared with memchr, as in the native benchmark.
void MeasureScan(Computer& computer);

}  // namespace benchmarks
