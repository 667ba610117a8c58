// Results that nobody has read: what a host looks for at its start, and when its database is back.
#pragma once

#include "typelib/Vilnor.h"

namespace sample_host {

// Reads every result in the exchange directory, the oldest first, and prints what became of each.
// One that was set aside ("OutNewCase4711 2026-11-16 14.05.00.xml") gets its own name back for
// that, one at a time, since the component finds a result by its key; a newer one that has that
// name waits meanwhile ("OutNewCase4711 waiting 1.xml"). Where one is set aside again, the newer
// ones of its key are not read. Nothing is deleted or overwritten here: killed at any moment, the
// next run finds all that was not entered. To be called while no request is open. Raises an
// AutomationError when the directory is not known.
void ReadWaitingResults(_BVilnor& vilnor);

}  // namespace sample_host
