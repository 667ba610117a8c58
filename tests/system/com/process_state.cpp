#include "system/com/process_state.h"

#include <array>
#include <vector>

#include "com/win32.h"
#include "endurance/process_counts.h"

namespace system_tests {

int FreeTlsIndexes() {
  std::vector<DWORD> indexes;
  for (DWORD index = TlsAlloc(); index != TLS_OUT_OF_INDEXES; index = TlsAlloc()) {
    indexes.push_back(index);
  }
  for (DWORD index : indexes) {
    TlsFree(index);
  }
  return static_cast<int>(indexes.size());
}

std::size_t HeapBytes() {
  std::array<HANDLE, 100> heaps{};
  const DWORD count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
  std::size_t bytes = 0;
  for (DWORD i = 0; i < count; ++i) {
    HeapLock(heaps[i]);
    PROCESS_HEAP_ENTRY entry{};
    while (HeapWalk(heaps[i], &entry) != FALSE) {
      bytes += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? entry.cbData : 0;
    }
    HeapUnlock(heaps[i]);
  }
  return bytes;
}

int Handles() {
  return endurance::CountNow().handles;
}

}  // namespace system_tests
