#pragma once

#include "windows/computer.h"

namespace benchmarks {

// An application's request, and a new case's result, each beside its bare statements through ADO
// and what is done with its file.
void MeasureTrips(Computer& computer);

// The time and the memory of thousands of trips.
void MeasureManyTrips(Computer& computer);

}  // namespace benchmarks
