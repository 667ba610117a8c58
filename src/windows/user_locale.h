#pragma once

#include "platform/locale.h"

namespace windows {

// The current user's regional settings, read at each call.
class UserLocale : public platform::Locale {
 public:
  automation::Regional Regional() override;
  // The ANSI form of the system's answer.
  std::u16string Info(std::int32_t item) override;
};

}  // namespace windows
