#include "vilnor_dll/module.h"

#include "com/module.h"
#include "host/notification_window.h"
#include "windows/system_platform.h"
#include "windows/user32_windows.h"

namespace vilnor_dll {

bool ModuleInUse() {
  return com::IsModuleLocked() || windows::WindowsExist() || host::NotifyTargets() != 0;
}

void UseSystemPlatform() {
  static windows::SystemPlatform system;
  platform::Use(system.platform());
}

}  // namespace vilnor_dll
