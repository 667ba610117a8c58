// Included in front of GoogleTest in the Windows build: the compiler's win32 thread model has no
// std::mutex, of which GoogleTest makes this class for the threads that it starts itself. No test
// here has it start any.
#pragma once

#define GTEST_HAS_NOTIFICATION_ 1

namespace testing::internal {
class Notification {
 public:
  void Notify() {}
  void WaitForNotification() {}
};
}  // namespace testing::internal
