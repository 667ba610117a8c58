#pragma once

#include <functional>
#include <utility>

#include "system/com/component.h"
#include "system/com/thread.h"

namespace system_tests {

// A thread with an apartment and a message loop that runs the work given to it.
class Apartment {
 public:
  Apartment() { WaitForSingleObject(ready_, INFINITE); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() {
    PostThreadMessageW(thread_.id(), WM_QUIT, 0, 0);
    WaitForSingleObject(ended_, INFINITE);
    CloseHandle(ready_);
    CloseHandle(done_);
    CloseHandle(ended_);
  }

  // Runs `work` on the apartment's thread and waits for it to end, dispatching this thread's
  // messages.
  bool Do(std::function<void()> work) {
    work_ = std::move(work);
    PostThreadMessageW(thread_.id(), kWork, 0, 0);
    return PumpUntil([&] { return WaitForSingleObject(done_, 0) == WAIT_OBJECT_0; });
  }

 private:
  static constexpr UINT kWork = WM_APP;

  void Run() {
    CoInitialize(nullptr);
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);
    SetEvent(ready_);
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
      if (message.hwnd == nullptr && message.message == kWork) {
        work_();
        SetEvent(done_);
      } else {
        DispatchMessageW(&message);
      }
    }
    CoUninitialize();
    SetEvent(ended_);
  }

  std::function<void()> work_;
  HANDLE ready_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  HANDLE done_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HANDLE ended_ = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  Thread thread_{[this] { Run(); }};
};

}  // namespace system_tests
