#include "platform/platform.h"

#include <cassert>

namespace platform {
namespace {

thread_local Platform* current = nullptr;

}  // namespace

Platform& Current() {
  assert(current != nullptr);
  return *current;
}

void Use(Platform& platform) {
  current = &platform;
}

}  // namespace platform
