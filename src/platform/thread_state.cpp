#include "platform/thread_state.h"

#include <vector>

namespace platform {
namespace {

using Forgetting = std::vector<void (*)()>;

// Never destroyed, like the states themselves.
Forgetting& OnForget() {
  thread_local Forgetting* all = nullptr;
  if (all == nullptr) {
    all = std::make_unique<Forgetting>().release();
  }
  return *all;
}

}  // namespace

void WhenForgotten(void (*forget)()) {
  OnForget().push_back(forget);
}

void ForgetThreadState() {
  // Destroying one state may create another.
  while (!OnForget().empty()) {
    auto* const forget = OnForget().back();
    OnForget().pop_back();
    forget();
  }
}

}  // namespace platform
