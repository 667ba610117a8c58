#include "contract/registry_adapter.h"

#include "com/wide_text.h"
#include "com/win32.h"
#include "windows/system_platform.h"

namespace contract {

platform::Platform& RegistryPlatform() {
  static ::windows::SystemPlatform system;
  return system.platform();
}

void SetNumber(const std::u16string& path, const std::u16string& name) {
  const DWORD number = 7;
  RegSetKeyValueW(HKEY_CURRENT_USER, ::com::Wide(path).c_str(), ::com::Wide(name).c_str(),
                  REG_DWORD, &number, sizeof number);
}

}  // namespace contract
