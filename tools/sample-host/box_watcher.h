// Watches for the component's message boxes, for runs without a person.
#pragma once

#include <string>

#include "com/win32.h"

namespace sample_host {

struct BoxOrders {
  // Answer the boxes: Yes or No where that is asked, OK elsewhere.
  bool answer = false;
  bool yes = false;
  // Print the boxes but leave them open, until `releaseFile` (when it is named) exists.
  bool keep = false;
  std::u16string releaseFile;
};

// Prints every message box of this process, "box TITLE TEXT BUTTONS", and treats it as ordered.
// Works on a thread of its own, since the component waits inside its boxes.
class BoxWatcher {
 public:
  explicit BoxWatcher(BoxOrders orders);
  BoxWatcher(const BoxWatcher&) = delete;
  BoxWatcher& operator=(const BoxWatcher&) = delete;
  ~BoxWatcher();

 private:
  static DWORD WINAPI Work(void* watcher);

  BoxOrders orders_;
  HANDLE stop_;
  HANDLE thread_;
};

}  // namespace sample_host
