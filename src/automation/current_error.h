// The error being handled, as a value. Call both functions only in a catch block.
#pragma once

#include <cstdint>

#include "automation/automation_error.h"

namespace automation {

// An AutomationError as it is, 7 if memory is exhausted, 440 for any other exception.
AutomationError CurrentError();
// Its number; cannot fail.
std::int32_t CurrentErrorNumber() noexcept;

}  // namespace automation
