#include "process_counts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <psapi.h>
#include <winternl.h>

namespace endurance {
namespace {

// Anonymous memory, as Wine takes it from the system below.
SIZE_T PrivateKilobytes() {
  PROCESS_MEMORY_COUNTERS counters{};
  GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
  return counters.PagefileUsage / 1024;
}

// A handle is a multiple of four, and the lowest free one is given out first.
int Handles() {
  constexpr std::uintptr_t kStep = 4;
  constexpr std::uintptr_t kBeyondAll = 0x40000;
  int count = 0;
  for (std::uintptr_t value = kStep; value < kBeyondAll; value += kStep) {
    DWORD flags = 0;
    count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != FALSE ? 1 : 0;
  }
  return count;
}

// An entry of the table of GDI handles that each process sees.
struct GdiEntry {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type;
  std::uint8_t flags;
  std::uint64_t userPointer;
};

int GdiObjects() {
  constexpr std::size_t kGdiSharedHandleTable = 0x94;
  constexpr int kEntries = 0x4000;
  PROCESS_BASIC_INFORMATION process{};
  NtQueryInformationProcess(GetCurrentProcess(), ProcessBasicInformation, &process, sizeof process,
                            nullptr);
  const auto* const block = reinterpret_cast<const char*>(process.PebBaseAddress);
  const auto* const table =
      *reinterpret_cast<const GdiEntry* const*>(block + kGdiSharedHandleTable);
  int count = 0;
  for (int i = 0; i < kEntries; ++i) {
    count += table[i].type != 0 ? 1 : 0;
  }
  return count;
}

// Of all programs of the Wine session. Objects are numbered, freed numbers are given out first:
// with so many more that no free number is left, the highest number says how many there are.
int UserObjects() {
  constexpr std::size_t kMore = 1000;
  std::array<HMENU, kMore> menus{};
  std::ranges::generate(menus, CreateMenu);
  int highest = 0;
  for (HMENU menu : menus) {
    highest = std::max<int>(highest, LOWORD(reinterpret_cast<std::uintptr_t>(menu)) / 2);
    DestroyMenu(menu);
  }
  return highest - static_cast<int>(kMore);
}

BOOL CALLBACK CountWhenOwn(HWND window, LPARAM count) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  *reinterpret_cast<int*>(count) += process == GetCurrentProcessId() ? 1 : 0;
  return TRUE;
}

int Windows() {
  int count = 0;
  EnumWindows(CountWhenOwn, reinterpret_cast<LPARAM>(&count));
  return count;
}

}  // namespace

ProcessCounts CountNow() {
  return {.privateKilobytes = PrivateKilobytes(),
          .handles = Handles(),
          .gdiObjects = GdiObjects(),
          .userObjects = UserObjects(),
          .windows = Windows()};
}

}  // namespace endurance
