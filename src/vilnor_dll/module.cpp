#include "vilnor_dll/module.h"

#include <atomic>

#include "com/com_error.h"
#include "com/own_module.h"
#include "host/notification_window.h"
#include "windows/system_platform.h"
#include "windows/user32_windows.h"

namespace vilnor_dll {
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

com::ComPtr<ITypeLib> TypeLibrary() {
  com::ComPtr<ITypeLib> library;
  com::Check(LoadTypeLibEx(com::OwnModulePath().c_str(), REGKIND_NONE, library.Receive()));
  return library;
}

com::ComPtr<ITypeInfo> TypeInfoOf(REFGUID identifier) {
  com::ComPtr<ITypeInfo> information;
  com::Check(TypeLibrary()->GetTypeInfoOfGuid(identifier, information.Receive()));
  return information;
}

void UseSystemPlatform() {
  static windows::SystemPlatform system;
  platform::Use(system.platform());
}

}  // namespace vilnor_dll
