// Component-wide variables: one set per thread, made at first use.
#pragma once

#include <memory>

namespace util {

// Never destroyed, on purpose: at a thread's or the process's exit COM is gone already, and the
// references held here must not be released into it.
template <class State>
State& ThreadState() {
  thread_local State* state = nullptr;
  if (state == nullptr) {
    state = std::make_unique<State>().release();
  }
  return *state;
}

}  // namespace util
