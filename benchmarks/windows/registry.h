#pragma once

#include "windows/computer.h"

namespace benchmarks {

// Loading a registry key while its number of values is doubled.
void MeasureRegistry(Computer& computer);

}  // namespace benchmarks
