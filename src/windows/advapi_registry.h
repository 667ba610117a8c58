#pragma once

#include "platform/registry_api.h"

namespace windows {

// The registry through advapi32's ANSI functions.
class AdvapiRegistry : public platform::RegistryApi {
 public:
  std::int32_t OpenKey(Key parent, const std::u16string& path, std::uint32_t access,
                       Key& opened) override;
  std::int32_t CreateKey(Key parent, const std::u16string& path, std::uint32_t access, Key& opened,
                         std::uint32_t& disposition) override;
  std::int32_t QueryLimits(Key key, Limits& limits) override;
  std::int32_t EnumValue(Key key, std::uint32_t index, const Limits& limits,
                         ValueEntry& entry) override;
  std::int32_t EnumKey(Key key, std::uint32_t index, const Limits& limits,
                       std::u16string& name) override;
  std::int32_t SetTextValue(Key key, const std::u16string& name,
                            const std::u16string& text) override;
  std::int32_t DeleteValue(Key key, const std::u16string& name) override;
  std::int32_t DeleteKey(Key parent, const std::u16string& name) override;
  std::int32_t CloseKey(Key key) override;
};

}  // namespace windows
