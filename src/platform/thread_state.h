// The component's global variables: one set per thread, created at first use. Everything that a
// thread keeps between two calls is kept here.
#pragma once

#include <memory>

namespace platform {

// Calls `forget` when the thread's state is forgotten.
void WhenForgotten(void (*forget)());

// The calling thread's `State`. Never destroyed, on purpose: when a thread or the process exits,
// COM is already gone, so the references held here must not be released.
template <class State>
State& ThreadState() {
  thread_local State* state = nullptr;
  if (state == nullptr) {
    state = std::make_unique<State>().release();
    WhenForgotten([] {
      // Destructors may still use it.
      std::unique_ptr<State>(state).reset();
      state = nullptr;
    });
  }
  return *state;
}

// For tests: destroys the calling thread's state, newest part first, as if the thread had never
// called the component. Its platform is forgotten, too, so call Use() next.
void ForgetThreadState();

}  // namespace platform
