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

// The key is open only while a member runs. Errors are those of registry/errors.h, 6 "Overflow" for
// a key with more than 32,767 text values or subkeys (the counts have 16 bits), 9 "Subscript out of
// range" for a position outside the values, and the conversion errors of a Value that is not text
// or a number. After a failed load the object holds no values and no subkeys.
class CRegistry {
 public:
  std::uint32_t Root() const { return root_; }
  // Tries to open the current key, if there is one, under the new root; the outcome is ignored, and
  // nothing is loaded.
  void SetRoot(std::uint32_t root);

  // Path below the root.
  const std::u16string& Key() const { return key_; }
  // Loads the key. With AutoCreate a missing key is created first, and one that the user may not
  // write raises kUnknownError, existing or not. Without AutoCreate both raise kCannotOpen.
  void SetKey(const std::u16string& path);

  bool AutoCreate() const { return autoCreate_; }
  void SetAutoCreate(bool create) { autoCreate_ = create; }

  std::int16_t ValueCount() const { return valueCount_; }
  // Always raises kReadOnlyProperty.
  [[noreturn]] static void SetValueCount(std::int16_t count);
  std::int16_t SubKeyCount() const { return subKeyCount_; }
  // Kept unchecked, unlike SetValueCount: old callers overwrite it.
  void SetSubKeyCount(std::int16_t count) { subKeyCount_ = count; }
  // Placeholders: always empty; setting has no effect.
  static std::u16string Default() { return {}; }
  static void SetDefault(const std::u16string& /*text*/) {}

  // A value's data: by position from 0 for a 16-bit integer, otherwise by name, ignoring letter
  // case. "" for a missing name; the unnamed value has the name "". An empty value follows the last
  // one.
  std::u16string GetValue(const automation::Value& request) const;
  // "" for a position outside the values.
  std::u16string GetName(std::int16_t position) const;
  // The subkey's name by number from 0; "" outside the list.
  std::u16string GetSubKey(std::int16_t index) const;

  // Writes a text value; `name` is read as in GetValue. False, after a message box, if the write
  // fails. The loaded values stay unchanged until Refresh.
  bool SetValue(const automation::Value& name, const std::u16string& text);
  // True if the value existed and was deleted. Reloads the key.
  bool DeleteValue(const std::u16string& name);
  // Deletes a subkey (a path below the current key) with all below it; true if nothing of it is
  // left. An empty name is not a subkey and deletes nothing. What is loaded stays until Refresh.
  bool DeleteKey(const std::u16string& name);
  // Makes `name` the current key: below the current one, unless it already is the current path.
  // Creates the key, writes the value if name and text are given (a message box if that fails), and
  // loads the key. Returns -1 if the key exists afterwards, else 0. If it cannot be created
  // (kCannotOpen, kUnknownError), the current key does not change.
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

  // Loads the key.
  void GetKeyInfo();
  KeyHandle OpenForLoading() const;
  // Creates or opens root\path with all rights. Raises kCannotOpen or kUnknownError.
  Created CreateEx(const std::u16string& path) const;
  // Opens the current key; the handle is empty if that fails.
  KeyHandle OpenKey(std::uint32_t access) const;
  // Error 9 outside the values.
  const Entry& EntryAt(std::int16_t position) const;

  std::uint32_t root_ = kLocalMachine;
  std::u16string key_;
  bool autoCreate_ = true;
  std::int16_t subKeyCount_ = 0;
  std::int16_t valueCount_ = 0;
  // An empty entry follows the last value.
  std::vector<Entry> values_ = std::vector<Entry>(1);
  // An empty name precedes the first subkey.
  std::vector<std::u16string> subKeys_ = std::vector<std::u16string>(1);
};

}  // namespace registry
