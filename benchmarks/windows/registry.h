#pragma once

#include "windows/computer.h"

namespace benchmarks {

// Loading a registry key whose values are doubled.
void MeasureRegistry(Computer& computer);

}  // namespace benchmarks
