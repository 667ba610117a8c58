#include "contract/registry_adapter.h"

#include "windows/system_platform.h"
#include "windows/wide_text.h"
#include "windows/win32.h"

namespace contract {

platform::Platform& RegistryPlatform() {
  static ::windows::SystemPlatform system;
  return system.platform();
}

void SetNumber(const std::u16string& path, const std::u16string& name) {
  const DWORD number = 7;
  RegSetKeyValueW(HKEY_CURRENT_USER, ::windows::Wide(path).c_str(), ::windows::Wide(name).c_str(),
                  REG_DWORD, &number, sizeof number);
}

}  // namespace contract
