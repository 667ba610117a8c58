#include "com/registration.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "com/classes.h"
#include "com/com_object.h"
#include "com/module.h"
#include "windows/bstr.h"

namespace com {
namespace {

constexpr WORD kMajorVersion = 1;
constexpr WORD kMinorVersion = 5;
constexpr const wchar_t* kVersion = L"1.5";
constexpr LCID kLibraryLocale = 0x409;

struct RegistryText {
  std::wstring key;
  // Empty: the key's default value.
  std::wstring name;
  std::wstring text;
};

std::wstring TextOf(const GUID& identifier) {
  std::array<wchar_t, 40> text{};
  StringFromGUID2(identifier, text.data(), static_cast<int>(text.size()));
  return text.data();
}

std::wstring ClassKey(const ClassEntry& entry) {
  return L"CLSID\\" + TextOf(entry.id);
}

// The values of one class, all below HKEY_CLASSES_ROOT.
std::vector<RegistryText> TextsOf(const ClassEntry& entry, const std::wstring& modulePath) {
  const std::wstring programId = entry.ProgramId();
  const std::wstring classKey = ClassKey(entry);
  return {
      {programId, L"", programId},
      {programId + L"\\CLSID", L"", TextOf(entry.id)},
      {classKey, L"", programId},
      {classKey + L"\\InprocServer32", L"", modulePath},
      {classKey + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
      {classKey + L"\\ProgID", L"", programId},
      {classKey + L"\\TypeLib", L"", TextOf(LIBID_Vilnor)},
      {classKey + L"\\Version", L"", kVersion},
  };
}

bool Write(const RegistryText& entry) {
  const auto bytes = static_cast<DWORD>((entry.text.size() + 1) * sizeof(wchar_t));
  return RegSetKeyValueW(HKEY_CLASSES_ROOT, entry.key.c_str(), entry.name.c_str(), REG_SZ,
                         entry.text.c_str(), bytes) == ERROR_SUCCESS;
}

bool WriteClass(const ClassEntry& entry, const std::wstring& modulePath) {
  const auto texts = TextsOf(entry, modulePath);
  return std::all_of(texts.begin(), texts.end(), Write);
}

// Whether nothing of the key is left.
bool DeleteTree(const std::wstring& key) {
  const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

bool DeleteClass(const ClassEntry& entry) {
  const bool classGone = DeleteTree(ClassKey(entry));
  return DeleteTree(entry.ProgramId()) && classGone;
}

// The system enters the library under its own locale only, where calls between apartments and users
// of another language may miss it; under the neutral locale everyone finds it.
std::wstring NeutralLocaleKey() {
  return L"TypeLib\\" + TextOf(LIBID_Vilnor) + L"\\" + kVersion + L"\\0";
}

HRESULT RegisterTypeLibrary(const std::wstring& modulePath) {
  const HRESULT result =
      RegisterTypeLib(TypeLibrary().get(), const_cast<wchar_t*>(modulePath.c_str()), nullptr);
  const bool found = SUCCEEDED(result) && Write({NeutralLocaleKey() + L"\\win32", L"", modulePath});
  return found ? S_OK : SELFREG_E_TYPELIB;
}

bool UnregisterTypeLibrary() {
  const bool neutralGone = DeleteTree(NeutralLocaleKey());
  windows::Bstr path;
  if (FAILED(QueryPathOfRegTypeLib(LIBID_Vilnor, kMajorVersion, kMinorVersion, kLibraryLocale,
                                   path.Receive()))) {
    return neutralGone;
  }
  const HRESULT result =
      UnRegisterTypeLib(LIBID_Vilnor, kMajorVersion, kMinorVersion, kLibraryLocale, SYS_WIN32);
  return SUCCEEDED(result) && neutralGone;
}

HRESULT TryToRegister() {
  const std::wstring path = ModulePath();
  if (FAILED(RegisterTypeLibrary(path))) {
    return SELFREG_E_TYPELIB;
  }
  const bool written = std::all_of(Classes().begin(), Classes().end(),
                                   [&](const auto& entry) { return WriteClass(entry, path); });
  return written ? S_OK : SELFREG_E_CLASS;
}

}  // namespace

HRESULT Register() {
  const HRESULT result = TryToRegister();
  if (FAILED(result)) {
    Unregister();
  }
  return result;
}

HRESULT Unregister() {
  const bool libraryGone = UnregisterTypeLibrary();
  const auto failures = std::count_if(Classes().begin(), Classes().end(),
                                      [](const auto& entry) { return !DeleteClass(entry); });
  if (failures != 0) {
    return SELFREG_E_CLASS;
  }
  return libraryGone ? S_OK : SELFREG_E_TYPELIB;
}

}  // namespace com
