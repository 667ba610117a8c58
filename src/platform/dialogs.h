#pragma once

#include <string>

namespace platform {

enum class Icon { None, Critical, Question, Exclamation };
enum class Buttons { Ok, YesNo };
// None: the box could not be shown, or ended without an answer.
enum class Answer { None, Ok, Yes, No };

struct MessageBox {
  std::u16string text;
  // If empty, the title bar shows the component's own name.
  std::u16string title;
  Icon icon = Icon::None;
  Buttons buttons = Buttons::Ok;
  bool operator==(const MessageBox&) const = default;
};

// Message boxes to the user at the workstation.
class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Shows the box and waits for the answer; the thread's messages are dispatched meanwhile.
  virtual Answer Show(const MessageBox& box) = 0;
};

}  // namespace platform
