// Keeps exceptions working when the process has another unwinder. The compiler's start-up code asks
// the system for libgcc_s_dw2-1.dll. If a plug-in or driver of the host has loaded that library,
// the start-up code would register this module's unwind tables there, while this module unwinds
// with the copy linked into it: the first exception would find no handler and abort the host. So
// the start-up code is told that the library is not loaded; src/CMakeLists.txt makes the linker
// redirect the call here.
#include <string_view>

#include "com/win32.h"

namespace {

using Question = HMODULE(WINAPI*)(const char* name);

constexpr std::string_view kSharedUnwinder = "libgcc_s_dw2-1.dll";

}  // namespace

extern "C" {

// The import table's entry, under the names that the linker uses for --wrap.
extern const Question realQuestion __asm__("___real__imp__GetModuleHandleA@4");

// Called before any constructor of the module runs.
static HMODULE WINAPI Answer(const char* name) {
  return name != nullptr && name == kSharedUnwinder ? nullptr : realQuestion(name);
}

extern const Question ownQuestion __asm__("___wrap__imp__GetModuleHandleA@4");
constexpr Question ownQuestion = Answer;
}
