#include "ado-odbc/registration.h"

#include <algorithm>
#include <array>
#include <vector>

#include "ado-odbc/class_table.h"

namespace ado_odbc {
namespace {

struct Entry {
  std::wstring key;   // under HKEY_CLASSES_ROOT
  std::wstring name;  // empty: the key's default value
  std::wstring text;
};

std::wstring TextOf(const CLSID& id) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
  return text.data();
}

std::wstring ClassKey(const ComClass& comClass) {
  return L"CLSID\\" + TextOf(comClass.id);
}

std::vector<Entry> EntriesOf(const ComClass& comClass, const std::wstring& modulePath) {
  const auto classKey = ClassKey(comClass);
  const auto id = TextOf(comClass.id);
  const std::wstring current = comClass.programId;
  const std::wstring newest = comClass.versionIndependentProgramId;
  return {
      {classKey, L"", comClass.name},
      {classKey + L"\\InprocServer32", L"", modulePath},
      {classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
      {classKey + L"\\ProgID", L"", current},
      {classKey + L"\\VersionIndependentProgID", L"", newest},
      {current, L"", comClass.name},
      {current + L"\\CLSID", L"", id},
      {newest, L"", comClass.name},
      {newest + L"\\CLSID", L"", id},
      {newest + L"\\CurVer", L"", current},
  };
}

LSTATUS Write(const Entry& entry) {
  const auto bytes = static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(HKEY_CLASSES_ROOT, entry.key.c_str(),
                         entry.name.empty() ? nullptr : entry.name.c_str(), REG_SZ,
                         entry.text.c_str(), bytes);
}

LSTATUS RemoveKey(const std::wstring& key) {
  const LSTATUS removed = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
  return removed == ERROR_FILE_NOT_FOUND ? ERROR_SUCCESS : removed;
}

}  // namespace

HRESULT Register(const std::wstring& modulePath) {
  for (const ComClass& comClass : Classes()) {
    for (const Entry& entry : EntriesOf(comClass, modulePath)) {
      if (const LSTATUS written = Write(entry); written != ERROR_SUCCESS) {
        Unregister();
        return HRESULT_FROM_WIN32(static_cast<DWORD>(written));
      }
    }
  }
  return S_OK;
}

HRESULT Unregister() {
  LSTATUS first = ERROR_SUCCESS;
  for (const ComClass& comClass : Classes()) {
    for (const std::wstring& key : {ClassKey(comClass), std::wstring(comClass.programId),
                                    std::wstring(comClass.versionIndependentProgramId)}) {
      const LSTATUS removed = RemoveKey(key);
      first = first == ERROR_SUCCESS ? removed : first;
    }
  }
  return HRESULT_FROM_WIN32(static_cast<DWORD>(first));
}

}  // namespace ado_odbc
