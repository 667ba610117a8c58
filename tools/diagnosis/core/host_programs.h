// What the host has registered, read as the component reads it but without creating anything.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/automation_error.h"
#include "platform/platform.h"

namespace diagnosis {

// One key as the component would find it.
struct RegisteredKey {
  // "" if the key has no path, or was refused.
  std::u16string path;
  bool missing = false;
  // The component's error, if the user may not open the key as the component does, or not create
  // the missing one.
  std::optional<automation::AutomationError> refusal;
};

RegisteredKey ReadRegisteredKey(platform::Platform& platform, std::u16string_view keyPath);

// The paths that the host's programs have by its registrations, existing or not.
std::vector<std::u16string> HostPrograms(platform::Platform& platform);

}  // namespace diagnosis
