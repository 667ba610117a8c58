// Watches for the component's message boxes, for unattended runs.
#pragma once

#include <string>

#include "com/win32.h"

namespace sample_host {

struct BoxOrders {
  // Answer the boxes: questions with Yes or No, others with OK.
  bool answer = false;
  bool yes = false;
  // Print the boxes but leave them open until `releaseFile` (if given) exists.
  bool keep = false;
  std::u16string releaseFile;
};

// Prints every message box of this process, "box TITLE TEXT BUTTONS", and handles it as requested.
// Runs on its own thread, because the component waits inside its boxes.
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
