// The errors of the registry class. Their numbers are application-defined error codes, as signed
// 32-bit numbers.
#pragma once

#include <cstdint>

#include "automation/automation_error.h"

namespace registry {

// The key, or its parent, cannot be opened or read.
inline constexpr std::int32_t kCannotOpen = static_cast<std::int32_t>(0x80040201);
// Only loading sets ValueCount.
inline constexpr std::int32_t kReadOnlyProperty = static_cast<std::int32_t>(0x80040207);
// The description contains the system's code.
inline constexpr std::int32_t kUnknownError = static_cast<std::int32_t>(0x80040209);
// The system neither created nor opened the key.
inline constexpr std::int32_t kCannotCreate = 1000;

// kCannotOpen, as raised while loading.
[[noreturn]] inline void RaiseCannotOpen() {
  throw automation::AutomationError(kCannotOpen, u"GetKeyInfo", u"Unable to open Key");
}

}  // namespace registry
