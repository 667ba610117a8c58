// Another program on the same desktop with its own session.
#pragma once

#include <string_view>
#include <vector>

#include "com/win32.h"

namespace system_tests {

// Another instance of this program, which holds a session until told to release it.
class HoldingProcess {
 public:
  // Returns when the session exists.
  HoldingProcess();
  HoldingProcess(const HoldingProcess&) = delete;
  HoldingProcess& operator=(const HoldingProcess&) = delete;
  ~HoldingProcess();

  // Its notification window; null when it has none.
  HWND Window() const;
  // Makes it release the session. Its exit code, STILL_ACTIVE when it did not end.
  DWORD Release();

 private:
  HANDLE ready_;
  HANDLE release_;
  PROCESS_INFORMATION process_{};
};

// Whether this process is that other program, which has then done its work.
bool RanAsHoldingProcess(const std::vector<std::string_view>& arguments);

}  // namespace system_tests
