#pragma once

#include "platform/clock.h"

namespace windows {

// The machine's clock in the user's time zone.
class SystemClock : public platform::Clock {
 public:
  automation::Date Now() override;
};

}  // namespace windows
