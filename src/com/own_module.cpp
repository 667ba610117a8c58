#include "com/own_module.h"

#include "automation/automation_error.h"
#include "com/win32.h"

namespace com {
namespace {

// The longest path that the wide calls return.
constexpr std::size_t kLongestPath = 32768;

// nullptr when the system does not find it, which cannot happen while its code runs.
HMODULE OwnModule(DWORD how) {
  HMODULE module = nullptr;
  const BOOL found = GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | how,
                                        reinterpret_cast<const wchar_t*>(&OwnModule), &module);
  return found == FALSE ? nullptr : module;
}

}  // namespace

std::wstring OwnModulePath() {
  const HMODULE module = OwnModule(GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT);
  std::wstring path(kLongestPath, L'\0');
  // For a null module the system would return the program's path.
  path.resize(module == nullptr
                  ? 0
                  : GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
  if (path.empty()) {
    throw automation::AutomationError(automation::RuntimeError::FileNotFound);
  }
  return path;
}

void StayLoaded() {
  OwnModule(GET_MODULE_HANDLE_EX_FLAG_PIN);
}

}  // namespace com
