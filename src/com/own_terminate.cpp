// An uncaught exception just ends the process. The compiler's library would first print its name on
// standard error, which no host has, and needs 46 KB of code to spell the name. Linked into a DLL
// that asks for it (src/vilnor_dll/CMakeLists.txt).
#include <cstdlib>
#include <exception>

namespace __gnu_cxx {

// Replaces the library's function of this name.
void __verbose_terminate_handler() {
  std::abort();
}

}  // namespace __gnu_cxx
