#pragma once

#include <cstdint>
#include <string>

#include "automation/regional.h"

namespace platform {

// The user's regional settings.
class Locale {
 public:
  virtual ~Locale() = default;
  // The current settings for the conversions (the user may change them at any time).
  virtual automation::Regional Regional() = 0;
  // One item of the user's default locale by its number (31 is the short date), "" if the system
  // returns nothing.
  virtual std::u16string Info(std::int32_t item) = 0;
};

}  // namespace platform
