#pragma once

#include "platform/locale.h"

namespace windows {

// The regional settings of the current user, asked anew at each call.
class UserLocale : public platform::Locale {
 public:
  automation::Regional Regional() override;
  // The ANSI form of the system's answer.
  std::u16string Info(std::int32_t item) override;
};

}  // namespace windows
