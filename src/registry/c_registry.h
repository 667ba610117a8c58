// One registry key: its text values and the names of its subkeys, loaded at once when the key is
// set and read from memory after that.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "automation/value.h"
#include "registry/key_handle.h"
#include "registry/key_reading.h"

namespace registry {

inline constexpr std::uint32_t kLocalMachine = 0x80000002;

// The key is held open only during a member's run. Errors are those of registry/errors.h, 6
// "Overflow" for a key with more than 32,767 text values or subkeys (the counts have 16 bits), 9
// "Subscript out of range" for a position outside the values, and what a Value that is no text or
// number raises. After a failed load the object holds no values and no subkeys.
class CRegistry {
 public:
  std::uint32_t Root() const { return root_; }
  // Tries to open the current key, if there is one, under the new root; whether it could shows
  // nowhere, and nothing is loaded.
  void SetRoot(std::uint32_t root);

  // Path below the root.
  const std::u16string& Key() const { return key_; }
  // Loads the key. With AutoCreate a missing key is created first, and one that the user may not
  // write raises kUnknownError, existing or not. Without it kCannotOpen is raised for both.
  void SetKey(const std::u16string& path);

  bool AutoCreate() const { return autoCreate_; }
  void SetAutoCreate(bool create) { autoCreate_ = create; }

  std::int16_t ValueCount() const { return valueCount_; }
  // Always raises kReadOnlyProperty.
  [[noreturn]] static void SetValueCount(std::int16_t count);
  std::int16_t SubKeyCount() const { return subKeyCount_; }
  // Kept unchecked, unlike SetValueCount: callers of old overwrite it.
  void SetSubKeyCount(std::int16_t count) { subKeyCount_ = count; }
  // Placeholders: always empty, without effect.
  static std::u16string Default() { return {}; }
  static void SetDefault(const std::u16string& /*text*/) {}

  // The data of a value: by position from 0 for a 16-bit integer, else by name without regard to
  // letter case. "" for a name that is not there; the unnamed value has the name "". One position
  // behind the last value stands an empty one.
  std::u16string GetValue(const automation::Value& request) const;
  // "" for a position outside the values.
  std::u16string GetName(std::int16_t position) const;
  // The subkey's name by number from 0; "" outside the list.
  std::u16string GetSubKey(std::int16_t index) const;

  // Writes a text value, the name given as in GetValue. False, after a message box, when it could
  // not be written. What is loaded stays as it is until Refresh.
  bool SetValue(const automation::Value& name, const std::u16string& text);
  // True when the value was there and is gone. Loads the key again.
  bool DeleteValue(const std::u16string& name);
  // Deletes a subkey (a path below the current key) with all below it; true when nothing of it is
  // left. An empty name is no subkey and deletes nothing. What is loaded stays until Refresh.
  bool DeleteKey(const std::u16string& name);
  // Makes `name` the current key: below the current one, unless it is the current path already;
  // creates it, writes the value when name and text are given (a message box when that fails), and
  // loads the key. -1 when the key exists afterwards, else 0. When it cannot be created
  // (kCannotOpen, kUnknownError) the current key stays what it was.
  std::int16_t Create(const std::u16string& name,
                      const std::optional<automation::Value>& valueName = std::nullopt,
                      const std::optional<std::u16string>& text = std::nullopt);
  void Refresh() { GetKeyInfo(); }

 private:
  struct Created {
    KeyHandle handle;
    // 1 created, 2 opened an existing key.
    std::uint32_t disposition = 0;
  };

  // The load.
  void GetKeyInfo();
  KeyHandle OpenForLoading() const;
  // Creates or opens root\path with all rights. Raises kCannotOpen or kUnknownError.
  Created CreateEx(const std::u16string& path) const;
  // The current key; owns none when it cannot be opened.
  KeyHandle OpenKey(std::uint32_t access) const;
  // Error 9 outside the table.
  const Entry& EntryAt(std::int16_t position) const;

  std::uint32_t root_ = kLocalMachine;
  std::u16string key_;
  bool autoCreate_ = true;
  std::int16_t subKeyCount_ = 0;
  std::int16_t valueCount_ = 0;
  // One empty entry stands behind the last value.
  std::vector<Entry> values_ = std::vector<Entry>(1);
  // One empty name stands before the first subkey.
  std::vector<std::u16string> subKeys_ = std::vector<std::u16string>(1);
};

}  // namespace registry
