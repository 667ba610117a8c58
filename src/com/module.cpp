#include "com/module.h"

#include <atomic>

#include "automation/automation_error.h"
#include "host/notification_window.h"
#include "windows/com_error.h"
#include "windows/system_platform.h"
#include "windows/user32_windows.h"

namespace com {
namespace {

std::atomic<long> locks = 0;

// Longest path that the system's wide calls give.
constexpr std::size_t kLongestPath = 32768;

}  // namespace

ModuleLock::ModuleLock() {
  LockModule();
}

ModuleLock::ModuleLock(const ModuleLock& /*other*/) : ModuleLock() {}

ModuleLock::~ModuleLock() {
  UnlockModule();
}

void LockModule() {
  ++locks;
}

void UnlockModule() {
  --locks;
}

bool ModuleInUse() {
  return locks != 0 || windows::WindowsExist() || host::NotifyTargets() != 0;
}

std::wstring ModulePath() {
  HMODULE module = nullptr;
  std::wstring path(kLongestPath, L'\0');
  const BOOL known = GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<const wchar_t*>(&locks), &module);
  path.resize(known == FALSE
                  ? 0
                  : GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
  if (path.empty()) {
    throw automation::AutomationError(automation::RuntimeError::FileNotFound);
  }
  return path;
}

windows::ComPtr<ITypeLib> TypeLibrary() {
  windows::ComPtr<ITypeLib> library;
  windows::Check(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, library.Receive()));
  return library;
}

windows::ComPtr<ITypeInfo> TypeInfoOf(REFGUID identifier) {
  windows::ComPtr<ITypeInfo> information;
  windows::Check(TypeLibrary()->GetTypeInfoOfGuid(identifier, information.Receive()));
  return information;
}

void UseSystemPlatform() {
  static windows::SystemPlatform system;
  platform::Use(system.platform());
}

}  // namespace com
