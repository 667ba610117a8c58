#pragma once

#include "platform/user_settings.h"

namespace windows {

// The store of the classic Basic runtime's GetSetting and SaveSetting, which the host uses too:
// text values under HKEY_CURRENT_USER, Software\VB and VBA Program Settings\application\section.
class RegistryUserSettings : public platform::UserSettings {
 public:
  std::u16string Get(const std::u16string& application, const std::u16string& section,
                     const std::u16string& key) override;
  void Save(const std::u16string& application, const std::u16string& section,
            const std::u16string& key, const std::u16string& text) override;
};

}  // namespace windows
