// Resources of this process that must not keep growing.
#pragma once

#include <cstddef>

namespace system_tests {

// TLS indexes still available, of about 1,080 in a process.
int FreeTlsIndexes();

// Bytes in use on the process's heaps.
std::size_t HeapBytes();

// Open handles. GetProcessHandleCount gives nothing useful in Wine.
int Handles();

}  // namespace system_tests
