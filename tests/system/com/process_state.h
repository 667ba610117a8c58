// What this process holds and must not hold more and more of.
#pragma once

#include <cstddef>

namespace system_tests {

// TLS indexes that can still be had, of the some 1,080 of a process.
int FreeTlsIndexes();

// Bytes in use on the process's heaps.
std::size_t HeapBytes();

// Open handles. GetProcessHandleCount tells nothing in Wine.
int Handles();

}  // namespace system_tests
