#include "field-tests/registry_state.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <sstream>

#include "com/server_registration.h"
#include "com/win32.h"
#include "field-tests/cannot_work.h"
#include "field-tests/core/text.h"
#include "field-tests/wide.h"
// Needs win32.h in front of it.
#include "typelib/Vilnor.h"

namespace field_tests {
namespace {

// In calls between apartments, Wine registers the type library that the manifest names, for this
// computer or for the user. Nobody knows whether a Windows does so.
void AddTypeLibrary(const std::wstring& classes, std::vector<std::wstring>& places) {
  places.push_back(classes + L"TypeLib\\" + com::GuidText(LIBID_Vilnor));
  for (const IID& id : {IID__BVilnor, DIID___BVilnor, IID__DBVilnor}) {
    places.push_back(classes + L"Interface\\" + com::GuidText(id));
  }
}

std::vector<std::wstring> AllPlaces() {
  std::vector<std::wstring> places = {
      L"HKLM\\SOFTWARE\\Kestra",
      L"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe",
      L"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra.Main.exe",
      L"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra32.exe",
      L"HKCU\\Software\\VB and VBA Program Settings\\KESTRA",
      L"HKCU\\Software\\VB and VBA Program Settings\\VILNORTEST",
      L"HKCU\\Software\\Vilnor contract"};
  AddTypeLibrary(L"HKLM\\SOFTWARE\\Classes\\", places);
  AddTypeLibrary(L"HKCU\\Software\\Classes\\", places);
  return places;
}

const std::vector<std::wstring>& Places() {
  static const std::vector<std::wstring> places = AllPlaces();
  return places;
}

constexpr DWORD kLongestName = 16384;

struct CloseKey {
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using Key = std::unique_ptr<std::remove_pointer_t<HKEY>, CloseKey>;

HKEY RootOf(const std::wstring& key) {
  return key.starts_with(L"HKLM") ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

std::wstring PathOf(const std::wstring& key) {
  return key.substr(5);
}

// A key that was taken for missing would be deleted afterwards.
void RequireRead(LSTATUS status, const std::wstring& key) {
  if (status != ERROR_SUCCESS) {
    throw CannotWork("The registry key " + Utf8(key) + " cannot be read (error " +
                     std::to_string(status) + "). Start run.cmd as a user who may read it.");
  }
}

// Null for a missing key.
Key Open(const std::wstring& key) {
  HKEY opened = nullptr;
  const LSTATUS status = RegOpenKeyExW(RootOf(key), PathOf(key).c_str(), 0, KEY_READ, &opened);
  if (status != ERROR_FILE_NOT_FOUND) {
    RequireRead(status, key);
  }
  return Key(opened);
}

Key Create(const std::wstring& key) {
  HKEY opened = nullptr;
  RegCreateKeyExW(RootOf(key), PathOf(key).c_str(), 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr,
                  &opened, nullptr);
  return Key(opened);
}

std::vector<std::wstring> KeysBelow(const std::wstring& path, HKEY key) {
  std::vector<std::wstring> names;
  std::vector<wchar_t> name(kLongestName);
  for (DWORD index = 0;; ++index) {
    DWORD length = kLongestName;
    const LSTATUS status =
        RegEnumKeyExW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_NO_MORE_ITEMS) {
      return names;
    }
    RequireRead(status, path);
    names.emplace_back(name.data(), length);
  }
}

KeyState StateOf(const std::wstring& name, HKEY key) {
  KeyState state = {.key = name, .exists = key != nullptr, .values = {}};
  std::vector<wchar_t> value(kLongestName);
  for (DWORD index = 0; key != nullptr; ++index) {
    DWORD length = kLongestName;
    DWORD type = 0;
    DWORD size = 0;
    const LSTATUS status =
        RegEnumValueW(key, index, value.data(), &length, nullptr, &type, nullptr, &size);
    if (status == ERROR_NO_MORE_ITEMS) {
      break;
    }
    RequireRead(status, name);
    std::string bytes(size, '\0');
    RequireRead(RegQueryValueExW(key, value.data(), nullptr, &type,
                                 reinterpret_cast<BYTE*>(bytes.data()), &size),
                name);
    bytes.resize(size);
    state.values[value.data()] = {type, bytes};
  }
  return state;
}

void Collect(const std::wstring& name, std::vector<KeyState>& states) {
  const Key key = Open(name);
  states.push_back(StateOf(name, key.get()));
  if (key) {
    for (const auto& child : KeysBelow(name, key.get())) {
      Collect(std::wstring(name).append(L"\\").append(child), states);
    }
  }
}

std::wstring ParentOf(const std::wstring& key) {
  return key.substr(0, key.rfind(L'\\'));
}

// Keys above a missing one that are missing, too, are made and left by whoever creates it.
void CollectMissingAbove(const std::wstring& key, std::vector<KeyState>& states) {
  const std::wstring parent = ParentOf(key);
  const bool isKnown = std::any_of(states.begin(), states.end(),
                                   [&](const KeyState& state) { return state.key == parent; });
  if (parent.size() > 4 && !isKnown && !Open(parent)) {
    states.push_back({.key = parent, .exists = false, .values = {}});
    CollectMissingAbove(parent, states);
  }
}

bool PutValues(const KeyState& wanted) {
  const Key key = Create(wanted.key);
  if (!key) {
    return false;
  }
  bool done = true;
  const KeyState now = StateOf(wanted.key, key.get());
  for (const auto& [name, is] : now.values) {
    if (!wanted.values.contains(name)) {
      done &= RegDeleteValueW(key.get(), name.c_str()) == ERROR_SUCCESS;
    }
  }
  for (const auto& [name, value] : wanted.values) {
    done &= RegSetValueExW(key.get(), name.c_str(), 0, value.first,
                           reinterpret_cast<const BYTE*>(value.second.data()),
                           static_cast<DWORD>(value.second.size())) == ERROR_SUCCESS;
  }
  return done;
}

bool Remove(const std::wstring& key) {
  const auto path = PathOf(key);
  RegDeleteTreeW(RootOf(key), path.c_str());
  RegDeleteKeyW(RootOf(key), path.c_str());
  return !Open(key);
}

std::string Hex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text = "x";
  for (const char byte : bytes) {
    text += kDigits[static_cast<unsigned char>(byte) >> 4];
    text += kDigits[static_cast<unsigned char>(byte) & 15];
  }
  return text;
}

std::string FromHex(const std::string& text) {
  std::string bytes;
  for (std::size_t at = 1; at + 1 < text.size(); at += 2) {
    bytes += static_cast<char>(std::strtol(text.substr(at, 2).c_str(), nullptr, 16));
  }
  return bytes;
}

// At one of the places or below it; or above one, which is only ever noted as missing.
bool IsOfTheTests(const KeyState& state) {
  return std::any_of(Places().begin(), Places().end(), [&](const std::wstring& place) {
    return state.key == place || state.key.starts_with(place + L"\\") ||
           (!state.exists && state.values.empty() && place.starts_with(state.key + L"\\"));
  });
}

}  // namespace

RegistryState RegistryState::Now() {
  RegistryState state;
  for (const auto& place : Places()) {
    Collect(place, state.keys_);
    if (!Open(place)) {
      CollectMissingAbove(place, state.keys_);
    }
  }
  return state;
}

bool RegistryState::PutBack() const {
  std::vector<KeyState> deepestFirst = Now().keys_;
  std::reverse(deepestFirst.begin(), deepestFirst.end());
  bool done = true;
  // Keys that are new.
  for (const auto& is : deepestFirst) {
    // A note of an earlier version may not know all places.
    const bool isNoted = std::any_of(keys_.begin(), keys_.end(), [&](const KeyState& state) {
      return state.key == is.key || is.key.starts_with(state.key + L"\\");
    });
    const auto wanted = std::find_if(keys_.begin(), keys_.end(),
                                     [&](const KeyState& state) { return state.key == is.key; });
    if (is.exists && isNoted && (wanted == keys_.end() || !wanted->exists)) {
      done &= Remove(is.key);
    }
  }
  for (const auto& wanted : keys_) {
    if (wanted.exists && wanted != StateOf(wanted.key, Open(wanted.key).get())) {
      done &= PutValues(wanted);
    }
    // A key above: only when nobody else has begun to use it.
    const Key key = wanted.exists ? Key() : Open(wanted.key);
    if (key && KeysBelow(wanted.key, key.get()).empty() &&
        StateOf(wanted.key, key.get()).values.empty()) {
      done &= Remove(wanted.key);
    }
  }
  return done;
}

std::string RegistryState::Text() const {
  std::string text;
  for (const auto& state : keys_) {
    text += std::string(state.exists ? "key " : "missing ") + Utf8(state.key) + "\n";
    for (const auto& [name, value] : state.values) {
      text += "value " + std::to_string(value.first) + " " + Hex(Utf8(name)) + " " +
              Hex(value.second) + "\n";
    }
  }
  return text + "end\n";
}

RegistryState RegistryState::FromText(std::string_view text) {
  RegistryState state;
  const auto lines = LinesOf(text);
  // An unfinished file was written before anything was changed.
  if (lines.empty() || lines.back() != "end") {
    return Now();
  }
  for (const auto& line : lines) {
    const auto blank = line.find(' ');
    const auto word = line.substr(0, blank);
    if (word == "key" || word == "missing") {
      state.keys_.push_back(
          {.key = WideOf(line.substr(blank + 1)), .exists = word == "key", .values = {}});
    } else if (word == "value" && !state.keys_.empty()) {
      std::istringstream words(line.substr(blank));
      unsigned long type = 0;
      std::string name;
      std::string bytes;
      words >> type >> name >> bytes;
      state.keys_.back().values[WideOf(FromHex(name))] = {type, FromHex(bytes)};
    }
  }
  for (const auto& each : state.keys_) {
    if (!IsOfTheTests(each)) {
      throw CannotWork("The note of an earlier run in the folder VilnorFieldTests names the key " +
                       Utf8(each.key) +
                       ", which the field tests do not use. Nothing was changed. Delete the folder "
                       "if you know that no earlier run was ended.");
    }
  }
  return state;
}

bool IsTypeLibraryRegistered() {
  return std::any_of(Places().begin(), Places().end(), [](const std::wstring& place) {
    return place.find(L"\\TypeLib\\") != std::wstring::npos && Open(place);
  });
}

bool MayWrite(const std::wstring& key) {
  return Create(key) != nullptr;
}

bool SetInstallationsAside() {
  const auto keys = std::to_array<std::wstring>(
      {kLinkKey, kHostKey,
       L"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra.Main.exe",
       L"HKLM\\SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra32.exe",
       kSettingKey});
  // Only their values: the keys keep their access rights.
  return std::all_of(keys.begin(), keys.end(), [](const std::wstring& key) {
    const KeyState empty = {.key = key, .exists = true, .values = {}};
    const bool hasValues = !StateOf(key, Open(key).get()).values.empty();
    return !hasValues || PutValues(empty);
  });
}

bool SetRegistryText(const std::wstring& key, const std::wstring& name, const std::wstring& text) {
  return RegSetKeyValueW(RootOf(key), PathOf(key).c_str(), name.c_str(), REG_SZ, text.c_str(),
                         static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

std::wstring RegistryText(const std::wstring& key, const std::wstring& name) {
  std::array<wchar_t, 1024> text{};
  DWORD bytes = sizeof text;
  RegGetValueW(RootOf(key), PathOf(key).c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, text.data(),
               &bytes);
  return text.data();
}

}  // namespace field_tests
