#pragma once

#include <cstddef>

#include "windows/computer.h"

namespace benchmarks {

// Loading the component and making its first object, beside the least in-process server.
void MeasureLoading(Computer& computer);

// What the program does that MeasureLoading() starts for each figure.
int MicrosecondsOfLoading(std::size_t loading);

}  // namespace benchmarks
