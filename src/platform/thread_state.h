// The component-wide variables: one set per thread, made at first use. Whatever a thread keeps
// between two calls is kept here.
#pragma once

#include <memory>

namespace platform {

// Calls `forget` when the thread's state is forgotten.
void WhenForgotten(void (*forget)());

// The calling thread's `State`. Never destroyed, on purpose: when a thread or the process exits,
// COM is gone already, and the references held here must not be released into it.
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

// For tests: ends the calling thread's state, the newest part first, so that the thread is as one
// that has never called the component. Its platform is forgotten, too: Use() comes next.
void ForgetThreadState();

}  // namespace platform
