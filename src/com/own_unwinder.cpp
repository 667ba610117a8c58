// Exceptions beside another program part's unwinder. The compiler's start-up code asks the system
// for libgcc_s_dw2-1.dll. Where a plug-in or driver of the host has loaded that library, the
// start-up code would enter this module's unwind tables there, while this module unwinds by the
// copy that is linked into it: the first exception would find no handler and abort the host. So the
// start-up code gets the answer that the library is not there; src/CMakeLists.txt has the linker
// send the question here.
#include <string_view>

#include "com/win32.h"

namespace {

using Question = HMODULE(WINAPI*)(const char* name);

constexpr std::string_view kSharedUnwinder = "libgcc_s_dw2-1.dll";

}  // namespace

extern "C" {

// The import table's entry, in the names that the linker gives for --wrap.
extern const Question realQuestion __asm__("___real__imp__GetModuleHandleA@4");

// Called before any constructor of the module has run.
static HMODULE WINAPI Answer(const char* name) {
  return name != nullptr && name == kSharedUnwinder ? nullptr : realQuestion(name);
}

extern const Question ownQuestion __asm__("___wrap__imp__GetModuleHandleA@4");
constexpr Question ownQuestion = Answer;
}
