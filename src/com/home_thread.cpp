#include "com/home_thread.h"

#include "platform/thread_state.h"

namespace com {
namespace {

// Not the thread's number, which a later thread may have again: this address nobody gets twice.
struct Mark {};

const void* CurrentThread() {
  return &platform::ThreadState<Mark>();
}

}  // namespace

HomeThread::HomeThread() : thread_(CurrentThread()) {}

bool HomeThread::IsCurrent() const {
  return thread_ == CurrentThread();
}

}  // namespace com
