// In a program that has run for days the heap has already grown. So no memory is returned to the
// system here: the benchmarks measure the component, not the system.
#include <limits>
#include <malloc.h>

namespace {

const bool kHeapIsKept = [] {
  constexpr int kNever = std::numeric_limits<int>::max();
  return mallopt(M_TRIM_THRESHOLD, kNever) == 1 && mallopt(M_MMAP_THRESHOLD, kNever) == 1;
}();

}  // namespace
