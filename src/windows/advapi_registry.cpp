#include "windows/advapi_registry.h"

#include "com/win32.h"
#include "windows/ansi_text.h"

namespace windows {
namespace {

HKEY Handle(platform::RegistryApi::Key key) {
  return reinterpret_cast<HKEY>(key);
}

platform::RegistryApi::Key Number(HKEY key) {
  return reinterpret_cast<platform::RegistryApi::Key>(key);
}

// The limits count UTF-16 units; in an ANSI code page one unit takes up to three bytes.
std::string NameBuffer(std::uint32_t units) {
  return std::string(std::size_t{units} * 3 + 1, '\0');
}

}  // namespace

std::int32_t AdvapiRegistry::OpenKey(Key parent, const std::u16string& path, std::uint32_t access,
                                     Key& opened) {
  HKEY key = nullptr;
  const LSTATUS status = RegOpenKeyExA(Handle(parent), Ansi(path).c_str(), 0, access, &key);
  opened = Number(key);
  return status;
}

std::int32_t AdvapiRegistry::CreateKey(Key parent, const std::u16string& path, std::uint32_t access,
                                       Key& opened, std::uint32_t& disposition) {
  HKEY key = nullptr;
  DWORD outcome = 0;
  const LSTATUS status = RegCreateKeyExA(Handle(parent), Ansi(path).c_str(), 0, nullptr, 0, access,
                                         nullptr, &key, &outcome);
  opened = Number(key);
  disposition = outcome;
  return status;
}

std::int32_t AdvapiRegistry::QueryLimits(Key key, Limits& limits) {
  DWORD subkeyName = 0;
  DWORD valueName = 0;
  DWORD valueData = 0;
  const LSTATUS status =
      RegQueryInfoKeyA(Handle(key), nullptr, nullptr, nullptr, nullptr, &subkeyName, nullptr,
                       nullptr, &valueName, &valueData, nullptr, nullptr);
  limits = {.valueName = valueName, .valueData = valueData, .subkeyName = subkeyName};
  return status;
}

std::int32_t AdvapiRegistry::EnumValue(Key key, std::uint32_t index, const Limits& limits,
                                       ValueEntry& entry) {
  std::string name = NameBuffer(limits.valueName);
  std::string data(std::size_t{limits.valueData} * 2 + 1, '\0');
  auto nameLength = static_cast<DWORD>(name.size());
  auto dataLength = static_cast<DWORD>(data.size());
  DWORD type = 0;
  const LSTATUS status = RegEnumValueA(Handle(key), index, name.data(), &nameLength, nullptr, &type,
                                       reinterpret_cast<BYTE*>(data.data()), &dataLength);
  if (status != ERROR_SUCCESS) {
    return status;
  }
  entry = {.name = FromAnsi({name.data(), nameLength}), .type = type, .text = {}};
  if (type == kTypeText) {
    data.resize(dataLength);
    if (data.ends_with('\0')) {
      data.pop_back();
    }
    entry.text = FromAnsi(data);
  }
  return status;
}

std::int32_t AdvapiRegistry::EnumKey(Key key, std::uint32_t index, const Limits& limits,
                                     std::u16string& name) {
  std::string buffer = NameBuffer(limits.subkeyName);
  auto length = static_cast<DWORD>(buffer.size());
  const LSTATUS status =
      RegEnumKeyExA(Handle(key), index, buffer.data(), &length, nullptr, nullptr, nullptr, nullptr);
  if (status == ERROR_SUCCESS) {
    name = FromAnsi({buffer.data(), length});
  }
  return status;
}

std::int32_t AdvapiRegistry::SetTextValue(Key key, const std::u16string& name,
                                          const std::u16string& text) {
  const std::string data = Ansi(text);
  return RegSetValueExA(Handle(key), Ansi(name).c_str(), 0, REG_SZ,
                        reinterpret_cast<const BYTE*>(data.c_str()),
                        static_cast<DWORD>(data.size() + 1));
}

std::int32_t AdvapiRegistry::DeleteValue(Key key, const std::u16string& name) {
  return RegDeleteValueA(Handle(key), Ansi(name).c_str());
}

std::int32_t AdvapiRegistry::DeleteKey(Key parent, const std::u16string& name) {
  return RegDeleteKeyA(Handle(parent), Ansi(name).c_str());
}

std::int32_t AdvapiRegistry::CloseKey(Key key) {
  return RegCloseKey(Handle(key));
}

}  // namespace windows
