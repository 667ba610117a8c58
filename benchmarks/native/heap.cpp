// The heap of a program that runs for days has grown already: what is measured is the component,
// not the system's handing out and taking back of memory.
#include <limits>
#include <malloc.h>

namespace {

const bool kHeapIsKept = [] {
  constexpr int kNever = std::numeric_limits<int>::max();
  return mallopt(M_TRIM_THRESHOLD, kNever) == 1 && mallopt(M_MMAP_THRESHOLD, kNever) == 1;
}();

}  // namespace
