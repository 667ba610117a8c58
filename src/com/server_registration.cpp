#include "com/server_registration.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace com {
namespace {

std::wstring PathOf(std::wstring_view key) {
  return L"Software\\Classes\\" + std::wstring(key);
}

bool Exists(std::wstring_view key) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, PathOf(key).c_str(), 0, KEY_READ, &opened) !=
      ERROR_SUCCESS) {
    return false;
  }
  RegCloseKey(opened);
  return true;
}

struct RawValue {
  DWORD type = REG_NONE;
  std::vector<BYTE> bytes;
};

// Nothing for a missing value.
std::optional<RawValue> ValueOf(const std::wstring& key, const std::wstring& name) {
  const std::wstring path = PathOf(key);
  RawValue value;
  DWORD size = 0;
  constexpr DWORD kAsItIs = RRF_RT_ANY | RRF_NOEXPAND;
  LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, path.c_str(), name.c_str(), kAsItIs, nullptr,
                                nullptr, &size);
  if (status == ERROR_SUCCESS) {
    value.bytes.resize(size);
    status = RegGetValueW(HKEY_LOCAL_MACHINE, path.c_str(), name.c_str(), kAsItIs, &value.type,
                          value.bytes.data(), &size);
    value.bytes.resize(std::min<std::size_t>(size, value.bytes.size()));
  }
  return status == ERROR_SUCCESS ? std::optional(value) : std::nullopt;
}

// "" for a missing text.
std::wstring TextAt(const std::wstring& key, const std::wstring& name) {
  const auto value = ValueOf(key, name);
  if (!value || value->type != REG_SZ) {
    return {};
  }
  std::wstring text(reinterpret_cast<const wchar_t*>(value->bytes.data()),
                    value->bytes.size() / sizeof(wchar_t));
  text.erase(std::min(text.find(L'\0'), text.size()));
  return text;
}

// What one write replaces.
class Replaced {
 public:
  explicit Replaced(const RegistryText& entry)
      : key_(entry.key), name_(entry.name), value_(ValueOf(entry.key, entry.name)) {
    for (std::size_t end = 0; end != std::wstring::npos && firstNewKey_.empty();) {
      end = key_.find(L'\\', end + 1);
      const std::wstring key = key_.substr(0, end);
      firstNewKey_ = Exists(key) ? L"" : key;
    }
  }

  void PutBack() const {
    if (!firstNewKey_.empty()) {
      RegDeleteTreeW(HKEY_LOCAL_MACHINE, PathOf(firstNewKey_).c_str());
    } else if (value_) {
      RegSetKeyValueW(HKEY_LOCAL_MACHINE, PathOf(key_).c_str(), name_.c_str(), value_->type,
                      value_->bytes.data(), static_cast<DWORD>(value_->bytes.size()));
    } else {
      RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, PathOf(key_).c_str(), name_.c_str());
    }
  }

 private:
  std::wstring key_;
  std::wstring name_;
  std::optional<RawValue> value_;
  // The topmost key that the write creates; "" if it creates none.
  std::wstring firstNewKey_;
};

// Expands short names, so that both spellings compare equal.
std::wstring LongPath(const std::wstring& path) {
  constexpr DWORD kLongest = 32768;
  std::wstring text(kLongest, L'\0');
  const DWORD length = GetLongPathNameW(path.c_str(), text.data(), kLongest);
  text.resize(length < kLongest ? length : 0);
  return text.empty() ? path : text;
}

bool AreSameFile(const std::wstring& path, const std::wstring& other) {
  return CompareStringOrdinal(LongPath(path).c_str(), -1, LongPath(other).c_str(), -1, TRUE) ==
         CSTR_EQUAL;
}

bool IsServedBy(const RegisteredPart& part, const std::wstring& path) {
  bool found = false;
  for (const std::wstring& key : part.fileKeys) {
    const std::wstring file = TextAt(key, L"");
    if (!file.empty() && !AreSameFile(file, path)) {
      return false;
    }
    found = found || !file.empty();
  }
  return found;
}

bool HasNoKeys(const std::wstring& key) {
  HKEY opened = nullptr;
  DWORD keys = 1;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, PathOf(key).c_str(), 0, KEY_READ, &opened) ==
      ERROR_SUCCESS) {
    RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, nullptr, nullptr,
                     nullptr, nullptr, nullptr);
    RegCloseKey(opened);
  }
  return keys == 0;
}

HRESULT ResultOf(LSTATUS status) {
  return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

bool Stands(const std::optional<RegistryText>& proof) {
  return !proof || TextAt(proof->key, proof->name) == proof->text;
}

// Stops at the first failure.
HRESULT RemovePart(const RegisteredPart& part, MachineClasses& classes) {
  for (const auto& [key, proof] : part.removed) {
    const HRESULT removed = Stands(proof) ? ResultOf(classes.Remove(key)) : S_OK;
    if (FAILED(removed)) {
      return removed;
    }
  }
  const bool empty = !part.parent.empty() && HasNoKeys(part.parent);
  return empty ? ResultOf(classes.Remove(part.parent)) : S_OK;
}

}  // namespace

void RegisteredPart::Add(const std::wstring& key, const wchar_t* below, const wchar_t* name,
                         const std::wstring& text) {
  texts.push_back({.key = key + below, .name = name, .text = text});
}

LSTATUS MachineClasses::Write(const RegistryText& entry) {
  const auto bytes = static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(HKEY_LOCAL_MACHINE, PathOf(entry.key).c_str(), entry.name.c_str(), REG_SZ,
                         entry.text.c_str(), bytes);
}

LSTATUS MachineClasses::Remove(const std::wstring& key) {
  return RegDeleteTreeW(HKEY_LOCAL_MACHINE, PathOf(key).c_str());
}

HRESULT Register(const std::vector<RegisteredPart>& parts, MachineClasses& classes) {
  std::vector<Replaced> replaced;
  for (const RegisteredPart& part : parts) {
    for (const RegistryText& entry : part.texts) {
      replaced.emplace_back(entry);
      const LSTATUS written = classes.Write(entry);
      if (written != ERROR_SUCCESS) {
        std::for_each(replaced.rbegin(), replaced.rend(), [](const auto& one) { one.PutBack(); });
        return HRESULT_FROM_WIN32(static_cast<DWORD>(written));
      }
    }
  }
  return S_OK;
}

HRESULT Unregister(const std::vector<RegisteredPart>& parts, const std::wstring& path,
                   MachineClasses& classes) {
  HRESULT result = S_OK;
  for (const RegisteredPart& part : parts) {
    if (IsServedBy(part, path)) {
      const HRESULT removed = RemovePart(part, classes);
      result = FAILED(result) ? result : removed;
    }
  }
  return result;
}

std::wstring GuidText(const GUID& identifier) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(identifier, text.data(), static_cast<int>(text.size()));
  return text.data();
}

}  // namespace com
