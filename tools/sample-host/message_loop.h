// The host's message loop. The component's hidden window lives on this thread: Vilnor Link's answer
// reaches it only while the loop runs.
#pragma once

#include <chrono>
#include <optional>

#include "operations.h"

namespace sample_host {

// Runs the loop until `answer` has been handled, at most for `bound`; false if it did not come. The
// component reads a result inside its window procedure, on an object whose events reach nobody. So
// the result has been read when DispatchMessage returns for this message. An answer that comes
// while one of the component's own message boxes is open is not seen here.
bool RunUntilAnswered(const AwaitedAnswer& answer, std::chrono::seconds bound);

}  // namespace sample_host
