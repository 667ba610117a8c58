#pragma once

#include <cstdint>
#include <string>

namespace platform {

// The system's registry calls that CRegistry makes, in their ANSI forms: text passes through the
// ANSI code page. Results are the system's own codes, 0 for success.
class RegistryApi {
 public:
  using Key = std::uintptr_t;

  static constexpr std::int32_t kSuccess = 0;
  static constexpr std::int32_t kFileNotFound = 2;
  static constexpr std::int32_t kAccessDenied = 5;
  static constexpr std::int32_t kMoreData = 234;
  static constexpr std::int32_t kNoMoreItems = 259;
  static constexpr std::int32_t kCannotCreateKey = 1010;
  static constexpr std::uint32_t kTypeText = 1;  // REG_SZ

  // Longest name, data and subkey name of a key, without terminating zeros; data in bytes.
  struct Limits {
    std::uint32_t valueName = 0;
    std::uint32_t valueData = 0;
    std::uint32_t subkeyName = 0;
  };

  struct ValueEntry {
    std::u16string name;
    std::uint32_t type = 0;
    // The data of a text value without its terminating zero; empty for other types.
    std::u16string text;
  };

  virtual ~RegistryApi() = default;
  virtual std::int32_t OpenKey(Key parent, const std::u16string& path, std::uint32_t access,
                               Key& opened) = 0;
  // `disposition`: 1 created, 2 opened an existing key.
  virtual std::int32_t CreateKey(Key parent, const std::u16string& path, std::uint32_t access,
                                 Key& opened, std::uint32_t& disposition) = 0;
  virtual std::int32_t QueryLimits(Key key, Limits& limits) = 0;
  // `limits` set the buffer sizes; kMoreData if a value has since outgrown them.
  virtual std::int32_t EnumValue(Key key, std::uint32_t index, const Limits& limits,
                                 ValueEntry& entry) = 0;
  virtual std::int32_t EnumKey(Key key, std::uint32_t index, const Limits& limits,
                               std::u16string& name) = 0;
  virtual std::int32_t SetTextValue(Key key, const std::u16string& name,
                                    const std::u16string& text) = 0;
  virtual std::int32_t DeleteValue(Key key, const std::u16string& name) = 0;
  // Deleting a key with subkeys may fail (kAccessDenied), so callers empty it first.
  virtual std::int32_t DeleteKey(Key parent, const std::u16string& name) = 0;
  virtual std::int32_t CloseKey(Key key) = 0;
};

}  // namespace platform
