// The error in flight, as a value. Both are to be called in a catch block.
#pragma once

#include <cstdint>

#include "automation/automation_error.h"

namespace automation {

// Itself, 7 for exhausted memory, 440 for anything else that is no AutomationError.
AutomationError CurrentError();
// Its number; cannot fail.
std::int32_t CurrentErrorNumber() noexcept;

}  // namespace automation
