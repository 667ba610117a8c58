// The DLL or program that this code is linked into.
#pragma once

#include <string>

namespace com {

// Full path. Throws error 53 when the system does not report it.
std::wstring OwnModulePath();

// Keeps it loaded until the process ends, however often it is freed. COM frees the servers of its
// last apartment whatever DllCanUnloadNow returns, while windows may still have their procedure
// here. And each load takes one of the process's roughly 1,080 TLS indexes for thread_local
// variables and exceptions, which the compiler's library never frees.
void StayLoaded();

}  // namespace com
