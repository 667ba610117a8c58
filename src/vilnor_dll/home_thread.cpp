#include "vilnor_dll/home_thread.h"

#include "platform/thread_state.h"

namespace vilnor_dll {
namespace {

// Not the thread id, which a later thread may reuse: this address is never reused.
struct Mark {};

const void* CurrentThread() {
  return &platform::ThreadState<Mark>();
}

}  // namespace

HomeThread::HomeThread() : thread_(CurrentThread()) {}

bool HomeThread::IsCurrent() const {
  return thread_ == CurrentThread();
}

}  // namespace vilnor_dll
