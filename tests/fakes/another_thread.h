// Runs work on a new thread, even where the compiler has no std::thread (its win32 thread model).
#pragma once

#ifdef _WIN32
#include "com/win32.h"
#else
#include <thread>
#endif

namespace fakes {

#ifdef _WIN32

template <class Action>
DWORD WINAPI RunAction(void* action) {
  (*static_cast<Action*>(action))();
  return 0;
}

// Runs `action` on it and waits for it to end. `action` must not throw.
template <class Action>
void OnAnotherThread(Action action) {
  const HANDLE thread = CreateThread(nullptr, 0, RunAction<Action>, &action, 0, nullptr);
  WaitForSingleObject(thread, INFINITE);
  CloseHandle(thread);
}

#else

template <class Action>
void OnAnotherThread(Action action) {
  std::thread(action).join();
}

#endif

}  // namespace fakes
