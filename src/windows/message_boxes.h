#pragma once

#include <cstdint>

#include "platform/dialogs.h"

namespace windows {

// The system's message boxes. A box belongs to the thread's active window or, while another program
// is in front, to its topmost visible one; it comes to the front as far as the system allows, and
// blocks all windows of the calling thread until it is answered.
class MessageBoxes : public platform::Dialogs {
 public:
  // None if the system cannot show the box, or closes it without an answer.
  platform::Answer Show(const platform::MessageBox& box) override;
};

// The style passed to the system: icon, buttons, and the flag to come to the front, which Wine does
// anyway.
std::uint32_t BoxStyle(const platform::MessageBox& box);

}  // namespace windows
