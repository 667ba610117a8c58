// The DLL or program that this code is linked into.
#pragma once

#include <string>

namespace com {

// Full path. Throws error 53 when the system does not tell it.
std::wstring OwnModulePath();

// Keeps it in memory until the process ends, however often it is freed. COM frees the servers of
// its last apartment whatever they answer to DllCanUnloadNow, while windows may still have their
// procedure here; and each load takes one of the process's some 1,080 TLS indexes for thread_local
// variables and exceptions, which the compiler's library never gives back.
void StayLoaded();

}  // namespace com
