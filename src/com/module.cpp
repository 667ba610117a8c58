#include "com/module.h"

#include <atomic>

#include "host/notification_window.h"
#include "windows/com_error.h"
#include "windows/own_module.h"
#include "windows/system_platform.h"
#include "windows/user32_windows.h"

namespace com {
namespace {

std::atomic<long> locks = 0;

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

windows::ComPtr<ITypeLib> TypeLibrary() {
  windows::ComPtr<ITypeLib> library;
  windows::Check(LoadTypeLibEx(windows::OwnModulePath().c_str(), REGKIND_NONE, library.Receive()));
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
