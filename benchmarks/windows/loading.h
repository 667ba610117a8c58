#pragma once

#include <cstddef>

#include "windows/computer.h"

namespace benchmarks {

// Loading the component and creating its first object, compared with the smallest in-process
// server.
void MeasureLoading(Computer& computer);

// Runs in the program that MeasureLoading() starts for each figure.
int MicrosecondsOfLoading(std::size_t loading);

}  // namespace benchmarks
