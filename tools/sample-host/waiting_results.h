// Unread results, which a host looks for at its start and when its database is back.
#pragma once

#include "typelib/Vilnor.h"

namespace sample_host {

// Reads every result in the exchange directory, oldest first, and prints what became of each. The
// component finds a result by its key, so one that was set aside
// ("OutNewCase4711 2026-11-16 14.05.00.xml") first gets its own name back, one at a time; a newer
// one of that name is renamed meanwhile ("OutNewCase4711 waiting 1.xml"). If a result is set aside
// again, newer ones with its key are not read. Deletes and overwrites nothing: after a kill at any
// moment, the next run finds every result that was not entered. Call it while no request is open.
// Raises an AutomationError if the directory is unknown.
void ReadWaitingResults(_BVilnor& vilnor);

}  // namespace sample_host
