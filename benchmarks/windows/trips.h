#pragma once

#include "windows/computer.h"

namespace benchmarks {

// An application's request, and a new case's result, each compared with its bare ADO statements and
// file operations.
void MeasureTrips(Computer& computer);

// The time and the memory of thousands of trips.
void MeasureManyTrips(Computer& computer);

}  // namespace benchmarks
