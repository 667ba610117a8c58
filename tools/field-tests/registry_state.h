// The registry keys that the tests write: how they were, so that they can be put back.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace field_tests {

struct KeyState {
  // "HKLM\SOFTWARE\Kestra"
  std::wstring key;
  bool exists = false;
  // Type and bytes by name.
  std::map<std::wstring, std::pair<unsigned long, std::string>> values;

  bool operator==(const KeyState&) const = default;
};

// The keys with all keys below them, and the keys above those that are missing.
class RegistryState {
 public:
  // As it is now. Raises CannotWork if a key is there and may not be read.
  static RegistryState Now();

  // Makes the registry equal to this state. Writes only what differs. False if something could not
  // be written. Raises CannotWork as Now() does.
  bool PutBack() const;
  bool operator==(const RegistryState&) const = default;

  // For a file, which a run that is killed leaves behind. FromText() raises CannotWork if it names
  // a key that is not the tests'; an unfinished file is the state as it is now.
  std::string Text() const;
  static RegistryState FromText(std::string_view text);

 private:
  std::vector<KeyState> keys_;
};

// Whether anybody has registered the component's type library.
bool IsTypeLibraryRegistered();

// Whether the key can be written; creates it.
bool MayWrite(const std::wstring& key);

// Sets a text value and creates its key if necessary. False if that is refused.
bool SetRegistryText(const std::wstring& key, const std::wstring& name, const std::wstring& text);
// "" for a missing one.
std::wstring RegistryText(const std::wstring& key, const std::wstring& name);

// Makes the computer one on which no practice program and no Vilnor Link are installed, so that no
// test uses the real ones. PutBack() brings them back. False if that is refused.
bool SetInstallationsAside();

inline constexpr const wchar_t* kHostKey = L"HKLM\\SOFTWARE\\Kestra\\Kestra.Main.exe";
inline constexpr const wchar_t* kLinkKey =
    L"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe";
inline constexpr const wchar_t* kSettingKey =
    L"HKCU\\Software\\VB and VBA Program Settings\\KESTRA\\Environment";

}  // namespace field_tests
