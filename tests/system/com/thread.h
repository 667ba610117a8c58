// Threads and locks for the tests; this toolchain's standard library has none.
#pragma once

#include <functional>
#include <utility>

#include "com/win32.h"

namespace system_tests {

// Runs its work at once on its own thread; the destructor waits for it to end.
class Thread {
 public:
  explicit Thread(std::function<void()> work)
      : work_(std::move(work)), handle_(CreateThread(nullptr, 0, Run, this, 0, &id_)) {}
  Thread(const Thread&) = delete;
  Thread& operator=(const Thread&) = delete;
  ~Thread() {
    WaitForSingleObject(handle_, INFINITE);
    CloseHandle(handle_);
  }
  DWORD id() const { return id_; }

 private:
  static DWORD WINAPI Run(void* self) {
    static_cast<Thread*>(self)->work_();
    return 0;
  }

  std::function<void()> work_;
  DWORD id_ = 0;
  HANDLE handle_;
};

// For std::lock_guard.
class Mutex {
 public:
  void lock() { AcquireSRWLockExclusive(&lock_); }
  void unlock() { ReleaseSRWLockExclusive(&lock_); }

 private:
  SRWLOCK lock_ = SRWLOCK_INIT;
};

}  // namespace system_tests
