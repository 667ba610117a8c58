#include <gmock/gmock.h>

// The component's thread state is not freed at the thread's end, see platform/thread_state.h.
extern "C" const char* __lsan_default_suppressions() {  // NOLINT: the sanitizer's own name
  return "leak:ThreadState";
}

int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
