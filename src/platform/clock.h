#pragma once

#include "automation/value.h"

namespace platform {

// The machine's clock in local time.
class Clock {
 public:
  virtual ~Clock() = default;
  // Today's date with the current time, to the second.
  virtual automation::Date Now() = 0;
};

}  // namespace platform
