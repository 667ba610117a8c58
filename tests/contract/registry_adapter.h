// The outside world of this build, made in native/ or windows/.
#pragma once

#include <string>

#include "platform/platform.h"

namespace contract {

// Natively the portable adapters and doubles, with a registry in memory; on Windows the system
// itself.
platform::Platform& RegistryPlatform();

// Writes a 32-bit number into the registry under HKEY_CURRENT_USER, which the port cannot, since
// the component does not.
void SetNumber(const std::u16string& path, const std::u16string& name);

}  // namespace contract
