#include "platform/platform.h"

#include <cassert>

#include "platform/thread_state.h"

namespace platform {
namespace {

struct InUse {
  Platform* platform = nullptr;
};

}  // namespace

Platform& Current() {
  auto* const platform = ThreadState<InUse>().platform;
  assert(platform != nullptr);
  return *platform;
}

void Use(Platform& platform) {
  ThreadState<InUse>().platform = &platform;
}

}  // namespace platform
