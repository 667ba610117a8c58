#pragma once

#include <string>

namespace platform {

// The host's per-user settings: text by application, section and key, shared with the host.
class UserSettings {
 public:
  virtual ~UserSettings() = default;
  // "" for a missing setting.
  virtual std::u16string Get(const std::u16string& application, const std::u16string& section,
                             const std::u16string& key) = 0;
  // Error 5 if it cannot be stored.
  virtual void Save(const std::u16string& application, const std::u16string& section,
                    const std::u16string& key, const std::u16string& text) = 0;
};

}  // namespace platform
