#include "platform/thread_state.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "fakes/another_thread.h"

namespace platform {
namespace {

std::vector<std::string> ended;

struct Counter {
  int count = 0;
};
struct Older {
  ~Older() { ended.emplace_back("older"); }
  int count = 0;
};
// Uses the older state in its destructor.
struct Newer {
  ~Newer() {
    ended.emplace_back("newer");
    ++ThreadState<Older>().count;
  }
};

TEST(ThreadState, ThreadStateIsKeptBetweenUsesOnAThread) {
  ForgetThreadState();
  ++ThreadState<Counter>().count;
  EXPECT_EQ(ThreadState<Counter>().count, 1);
}

TEST(ThreadState, ThreadStateIsNewOnAnotherThread) {
  ThreadState<Counter>().count = 7;
  int there = -1;
  fakes::OnAnotherThread([&] {
    there = ThreadState<Counter>().count;
    ForgetThreadState();
  });
  EXPECT_EQ(there, 0);
  EXPECT_EQ(ThreadState<Counter>().count, 7) << "forgetting is the other thread's own affair";
}

TEST(ThreadState, ForgottenThreadStateIsNewAgain) {
  ThreadState<Counter>().count = 7;
  ForgetThreadState();
  EXPECT_EQ(ThreadState<Counter>().count, 0);
}

TEST(ThreadState, NewestThreadStateIsForgottenFirst) {
  ForgetThreadState();
  ended.clear();
  ThreadState<Older>();
  ThreadState<Newer>();
  ForgetThreadState();
  EXPECT_EQ(ended, (std::vector<std::string>{"newer", "older"}));
}

TEST(ThreadState, ThreadStateRecreatedByADestructorIsForgottenToo) {
  ForgetThreadState();
  ended.clear();
  ThreadState<Newer>();
  ForgetThreadState();
  EXPECT_EQ(ended, (std::vector<std::string>{"newer", "older"}));
}

}  // namespace
}  // namespace platform
