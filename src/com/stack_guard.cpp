// The value by which an overrun stack is noticed, and what happens then, in the compiler's names.
// Its own library asks a cryptographic provider for the value, for which the system has to load and
// start three libraries: two thirds of the time in which Vilnor.dll was loaded.
#include <cstdint>

#include "com/win32.h"
// Needs win32.h in front of it; RtlGenRandom.
#include <ntsecapi.h>

// NOLINTBEGIN(bugprone-reserved-identifier): the names are the compiler's
extern "C" {

// What no text that overruns its place can write, should the system have no random bytes.
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

// Before any code of the component runs; the runtime's start-up has no guarded function.
__attribute__((constructor, no_stack_protector)) void ChooseStackGuard() {
  RtlGenRandom(&__stack_chk_guard, sizeof __stack_chk_guard);
}

}  // namespace
