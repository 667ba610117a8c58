#pragma once

#include "platform/dialogs.h"

namespace windows {

// The system's message boxes. A box comes to the front and, having no owner, holds up all windows
// of the calling thread until it is answered.
class MessageBoxes : public platform::Dialogs {
 public:
  // Ok or No when the system cannot show the box.
  platform::Answer Show(const platform::MessageBox& box) override;
};

}  // namespace windows
