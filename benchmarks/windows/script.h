// The alternative to the component: a script that does the same with ADO, MSXML and the script
// host's registry and file objects, all late-bound.
#pragma once

#include <string>

#include "windows/computer.h"

namespace benchmarks {

// The request of the sample application, saved as `fileName` in the exchange folder, with the
// numbers that the host would call with.
void RequestByScript(const Computer& computer, const wchar_t* fileName);

// A new case's result, read, entered and deleted.
void ResultByScript(const Computer& computer);

}  // namespace benchmarks
