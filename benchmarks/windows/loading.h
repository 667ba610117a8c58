#pragma once

#include "windows/computer.h"

namespace benchmarks {

// Loading the component and making its first object, beside the least in-process server.
void MeasureLoading(Computer& computer);

}  // namespace benchmarks
