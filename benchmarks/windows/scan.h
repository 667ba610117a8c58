#pragma once

#include "windows/computer.h"

namespace benchmarks {

// The scan of per-tooth texts beside memchr, as natively.
void MeasureScan(Computer& computer);

}  // namespace benchmarks
