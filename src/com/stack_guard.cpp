// The canary that detects a stack overrun, and the reaction to one, under the names that the
// compiler expects. Its own library gets the canary from a cryptographic provider, for which the
// system has to load and start three libraries: that was two thirds of the loading time of
// Vilnor.dll.
#include <cstdint>

#include "com/win32.h"
// Must follow win32.h; declares RtlGenRandom.
#include <ntsecapi.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the compiler's
extern "C" {

// Used if the system has no random bytes: a value that an overrunning string cannot write.
std::uintptr_t __stack_chk_guard = 0xFF0A0000;

[[noreturn]] void __stack_chk_fail() {
  OutputDebugStringA("*** stack smashing detected ***\n");
  RaiseFailFastException(nullptr, nullptr, 0);
  TerminateProcess(GetCurrentProcess(), 1);
  __builtin_unreachable();
}
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

// Runs before any code of the component; the runtime's start-up has no guarded function.
__attribute__((constructor, no_stack_protector)) void ChooseStackGuard() {
  RtlGenRandom(&__stack_chk_guard, sizeof __stack_chk_guard);
}

}  // namespace
