#pragma once

#include "windows/computer.h"

namespace benchmarks {

// The full application's document, built and saved by the component and by MSXML's DOM.
void MeasureDocument(Computer& computer);

}  // namespace benchmarks
