#include "field-tests/computer.h"

#include <array>
#include <vector>

#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/win32.h"
#include "field-tests/core/text.h"
#include "field-tests/wide.h"
// Need win32.h in front of them.
#include <sql.h>
#include <sqlext.h>

namespace field_tests {
namespace {

std::wstring MachineText(const wchar_t* key, const wchar_t* name) {
  std::array<wchar_t, 512> text{};
  DWORD bytes = sizeof text;
  RegGetValueW(HKEY_LOCAL_MACHINE, key, name, RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
  return text.data();
}

template <class Function>
Function SystemFunction(const wchar_t* module, const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(module), name)));
}

std::string WineVersion() {
  const auto version = SystemFunction<const char*(__cdecl*)()>(L"ntdll.dll", "wine_get_version");
  return version == nullptr ? "" : version();
}

// Windows tells programs without a manifest for it the version of Windows 8.
std::string WindowsVersion() {
  OSVERSIONINFOEXW version{};
  version.dwOSVersionInfoSize = sizeof version;
  const auto get = SystemFunction<LONG(WINAPI*)(OSVERSIONINFOEXW*)>(L"ntdll.dll", "RtlGetVersion");
  if (get == nullptr || get(&version) != 0) {
    return "unknown";
  }
  constexpr const wchar_t* kKey = L"SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
  // This name is "Windows 10" on Windows 11, too, whose builds begin at 22000.
  return Utf8(MachineText(kKey, L"ProductName")) + " " +
         Utf8(MachineText(kKey, L"DisplayVersion")) + " (" +
         std::to_string(version.dwMajorVersion) + "." + std::to_string(version.dwMinorVersion) +
         ", build " + std::to_string(version.dwBuildNumber) + ") " + Utf8(version.szCSDVersion);
}

std::string Bitness() {
  BOOL is32On64 = FALSE;
  IsWow64Process(GetCurrentProcess(), &is32On64);
  return is32On64 != FALSE ? "64-bit Windows, 32-bit tests" : "32-bit Windows";
}

std::string LocaleText(LCTYPE item) {
  std::array<wchar_t, 128> text{};
  GetLocaleInfoW(LOCALE_USER_DEFAULT, item, text.data(), text.size());
  return Utf8(text.data());
}

std::string InterfaceLanguage() {
  std::array<wchar_t, 128> text{};
  GetLocaleInfoW(MAKELCID(GetUserDefaultUILanguage(), SORT_DEFAULT), LOCALE_SNAME, text.data(),
                 text.size());
  return Utf8(text.data());
}

bool IsElevated() {
  HANDLE token = nullptr;
  TOKEN_ELEVATION elevation{};
  DWORD size = sizeof elevation;
  if (OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token) == FALSE) {
    return false;
  }
  GetTokenInformation(token, TokenElevation, &elevation, size, &size);
  CloseHandle(token);
  return elevation.TokenIsElevated != 0;
}

std::vector<BYTE> VersionBlock(const std::wstring& file) {
  DWORD ignored = 0;
  std::vector<BYTE> block(GetFileVersionInfoSizeW(file.c_str(), &ignored));
  if (block.empty() || GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(block.size()),
                                           block.data()) == FALSE) {
    block.clear();
  }
  return block;
}

std::string FileVersion(const std::wstring& file) {
  const auto block = VersionBlock(file);
  VS_FIXEDFILEINFO* version = nullptr;
  UINT length = 0;
  if (block.empty() ||
      VerQueryValueW(block.data(), L"\\", reinterpret_cast<void**>(&version), &length) == FALSE) {
    return "no version";
  }
  return std::to_string(HIWORD(version->dwFileVersionMS)) + "." +
         std::to_string(LOWORD(version->dwFileVersionMS)) + "." +
         std::to_string(HIWORD(version->dwFileVersionLS)) + "." +
         std::to_string(LOWORD(version->dwFileVersionLS));
}

std::string VersionText(const std::wstring& file, const std::wstring& name) {
  const auto block = VersionBlock(file);
  wchar_t* text = nullptr;
  UINT length = 0;
  const std::wstring path = L"\\StringFileInfo\\040904B0\\" + name;
  return !block.empty() && VerQueryValueW(block.data(), path.c_str(),
                                          reinterpret_cast<void**>(&text), &length) != FALSE
             ? Utf8(text)
             : "";
}

// The DLL that serves a class, which names the product better than the class does, and its version;
// "" if the class is not registered.
std::string ServerOf(const wchar_t* programId) {
  CLSID classId{};
  if (FAILED(CLSIDFromProgID(programId, &classId))) {
    return {};
  }
  std::array<wchar_t, 64> id{};
  StringFromGUID2(classId, id.data(), id.size());
  std::array<wchar_t, 1024> file{};
  DWORD bytes = sizeof file;
  RegGetValueW(HKEY_CLASSES_ROOT,
               (L"CLSID\\" + std::wstring(id.data()) + L"\\InprocServer32").c_str(), nullptr,
               RRF_RT_REG_SZ, nullptr, file.data(), &bytes);
  const std::wstring path = file.data();
  return Utf8(path.substr(path.find_last_of(L'\\') + 1)) + " " + FileVersion(path);
}

std::string Present(const std::vector<const wchar_t*>& programIds) {
  std::vector<std::string> found;
  for (const wchar_t* const each : programIds) {
    if (const auto server = ServerOf(each); !server.empty()) {
      found.push_back(server);
    }
  }
  return found.empty() ? "none" : Joined(found, ", ");
}

// ADO's own answer.
std::string AdoVersion() {
  CLSID classId{};
  com::ComPtr<IDispatch> connection;
  if (FAILED(CLSIDFromProgID(L"ADODB.Connection", &classId)) ||
      FAILED(CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              connection.ReceiveVoid()))) {
    return "none";
  }
  std::wstring name = L"Version";
  LPOLESTR names = name.data();
  DISPID member = 0;
  DISPPARAMS none{};
  VARIANT version{};
  std::string text = "no version";
  if (SUCCEEDED(connection->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member)) &&
      SUCCEEDED(connection->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                                   &none, &version, nullptr, nullptr)) &&
      V_VT(&version) == VT_BSTR) {
    text = Utf8(V_BSTR(&version));
  }
  VariantClear(&version);
  const auto mdac = Utf8(MachineText(L"SOFTWARE\\Microsoft\\DataAccess", L"FullInstallVer"));
  return text + " (" + ServerOf(L"ADODB.Connection") + ")" + (mdac.empty() ? "" : ", MDAC " + mdac);
}

std::string OdbcDrivers() {
  SQLHENV environment = nullptr;
  std::vector<std::string> names;
  SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment);
  SQLSetEnvAttr(environment, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
  std::array<SQLWCHAR, 256> name{};
  std::array<SQLWCHAR, 256> attributes{};
  SQLUSMALLINT direction = SQL_FETCH_FIRST;
  SQLSMALLINT length = 0;
  while (SQL_SUCCEEDED(SQLDriversW(environment, direction, name.data(), name.size(), &length,
                                   attributes.data(), attributes.size(), &length))) {
    names.push_back(Utf8(reinterpret_cast<const wchar_t*>(name.data())));
    direction = SQL_FETCH_NEXT;
  }
  SQLFreeHandle(SQL_HANDLE_ENV, environment);
  return names.empty() ? "none" : Joined(names, ", ");
}

}  // namespace

bool IsWine() {
  return !WineVersion().empty();
}

Facts ComputerFacts() {
  Facts facts;
  if (IsWine()) {
    facts.emplace_back("Wine", WineVersion());
  }
  facts.emplace_back("Windows", WindowsVersion());
  facts.emplace_back("Bitness", Bitness());
  facts.emplace_back("Administrator rights", IsElevated() ? "yes" : "no");
  facts.emplace_back("Display language", InterfaceLanguage());
  facts.emplace_back("Regional settings", LocaleText(LOCALE_SNAME));
  facts.emplace_back("Short date, time",
                     LocaleText(LOCALE_SSHORTDATE) + ", " + LocaleText(LOCALE_STIMEFORMAT));
  facts.emplace_back("Decimal separator", LocaleText(LOCALE_SDECIMAL));
  facts.emplace_back("ANSI code page", std::to_string(GetACP()));
  facts.emplace_back("MSXML", Present({L"Msxml2.DOMDocument.3.0", L"Msxml2.DOMDocument.4.0",
                                       L"Msxml2.DOMDocument.6.0"}));
  facts.emplace_back("ADO", AdoVersion());
  facts.emplace_back("ODBC drivers", OdbcDrivers());
  facts.emplace_back(
      "OLE DB providers",
      Present({L"Microsoft.Jet.OLEDB.4.0", L"Microsoft.ACE.OLEDB.12.0", L"Microsoft.ACE.OLEDB.16.0",
               L"SQLOLEDB", L"MSOLEDBSQL", L"MSDASQL"}));
  facts.emplace_back("Script host", Present({L"VBScript"}));
  return facts;
}

std::string ComponentVersion(const std::filesystem::path& dll) {
  return "Vilnor.dll " + FileVersion(dll.wstring()) + ", " +
         VersionText(dll.wstring(), L"Comments");
}

}  // namespace field_tests
