#include "windows/registry_user_settings.h"

#include "automation/automation_error.h"
#include "com/wide_text.h"
#include "com/win32.h"

namespace windows {
namespace {

std::wstring KeyPath(const std::u16string& application, const std::u16string& section) {
  return L"Software\\VB and VBA Program Settings\\" + com::Wide(application) + L"\\" +
         com::Wide(section);
}

}  // namespace

std::u16string RegistryUserSettings::Get(const std::u16string& application,
                                         const std::u16string& section, const std::u16string& key) {
  const std::wstring path = KeyPath(application, section);
  const std::wstring name = com::Wide(key);
  std::wstring text;
  DWORD bytes = 0;
  LSTATUS status = ERROR_MORE_DATA;
  while (status == ERROR_MORE_DATA) {
    text.resize(bytes / sizeof(wchar_t) + 1);
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    status = RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr,
                          text.data(), &bytes);
  }
  return status == ERROR_SUCCESS ? com::FromWide(text.c_str()) : std::u16string();
}

void RegistryUserSettings::Save(const std::u16string& application, const std::u16string& section,
                                const std::u16string& key, const std::u16string& text) {
  const std::wstring value = com::Wide(text);
  const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
  if (RegSetKeyValueW(HKEY_CURRENT_USER, KeyPath(application, section).c_str(),
                      com::Wide(key).c_str(), REG_SZ, value.c_str(), bytes) != ERROR_SUCCESS) {
    throw automation::AutomationError(automation::RuntimeError::InvalidProcedureCall);
  }
}

}  // namespace windows
