// This build's registry, created in native/ or windows/.
#pragma once

#include <string>

#include "platform/platform.h"

namespace contract {

// Natively the portable adapters and fakes with a registry in memory, on Windows the system itself.
platform::Platform& RegistryPlatform();

// Writes a 32-bit number under HKEY_CURRENT_USER. The port cannot, since the component never does.
void SetNumber(const std::u16string& path, const std::u16string& name);

}  // namespace contract
