// What an exception that nobody catches does: end the process, and nothing else. The compiler's
// library would first name it on the standard error output, which no host has, and needs 46 KB to
// spell the name. Linked into a DLL that asks for it (src/vilnor_dll/CMakeLists.txt).
#include <cstdlib>
#include <exception>

namespace __gnu_cxx {

// In the library's own name.
void __verbose_terminate_handler() {
  std::abort();
}

}  // namespace __gnu_cxx
