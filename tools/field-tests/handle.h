// A system handle that is closed with its owner.
#pragma once

#include <memory>

#include "com/win32.h"

namespace field_tests {

struct CloseHandleOf {
  using pointer = HANDLE;
  void operator()(HANDLE handle) const { CloseHandle(handle); }
};
using Handle = std::unique_ptr<HANDLE, CloseHandleOf>;

// Null for INVALID_HANDLE_VALUE.
inline Handle Owned(HANDLE handle) {
  return Handle(handle == INVALID_HANDLE_VALUE ? nullptr : handle);
}

}  // namespace field_tests
