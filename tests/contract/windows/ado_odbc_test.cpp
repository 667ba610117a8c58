// AdoOdbc.dll on Windows beyond the database contract: scripts, paths, registration, unloading.
#include <array>
#include <cstdio>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "com/com_ptr.h"
#include "com/win32.h"
#include "contract/adapters.h"
#include "platform/database.h"
#include "windows/ado_database.h"

namespace contract {
namespace {

constexpr CLSID kConnectionClass = {
    0x00000514, 0x0000, 0x0010, {0x80, 0x00, 0x00, 0xAA, 0x00, 0x6D, 0x2E, 0xA4}};
constexpr auto kConnectionKey = L"CLSID\\{00000514-0000-0010-8000-00AA006D2EA4}";

::com::ComPtr<IDispatch> NewAdoConnection() {
  ::com::ComPtr<IDispatch> connection;
  CoCreateInstance(kConnectionClass, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                   connection.ReceiveVoid());
  return connection;
}

// A property, found by its name as a script does.
VARIANT PropertyOf(IDispatch& object, const wchar_t* name) {
  auto* names = const_cast<wchar_t*>(name);
  DISPID member = 0;
  EXPECT_EQ(object.GetIDsOfNames(IID_NULL, &names, 1, 0, &member), S_OK);
  VARIANT content;
  VariantInit(&content);
  DISPPARAMS none{};
  EXPECT_EQ(
      object.Invoke(member, IID_NULL, 0, DISPATCH_PROPERTYGET, &none, &content, nullptr, nullptr),
      S_OK);
  return content;
}

LONG NumberOf(IDispatch& object, const wchar_t* name) {
  const VARIANT content = PropertyOf(object, name);
  EXPECT_EQ(V_VT(&content), VT_I4);
  return V_I4(&content);
}

// One of the DLL's exports; null when it does not serve the class.
template <class Function>
Function Export(const char* name) {
  const HMODULE module = GetModuleHandleW(L"AdoOdbc.dll");
  return module == nullptr
             ? nullptr
             : reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

using Answer = HRESULT(STDAPICALLTYPE*)();

bool HasKey(const std::wstring& key) {
  HKEY opened = nullptr;
  const bool found =
      RegOpenKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, KEY_READ, &opened) == ERROR_SUCCESS;
  if (found) {
    RegCloseKey(opened);
  }
  return found;
}

std::filesystem::path ScratchDatabase() {
  return std::filesystem::temp_directory_path() /
         (L"vilnor-ado-" + std::to_wstring(GetCurrentProcessId()) + L".db");
}

// The program is in build/windows/bin. It does not name the folder, because it ships with the field
// tests.
std::string CheckoutFolder() {
  std::array<char, 1024> program{};
  GetModuleFileNameA(nullptr, program.data(), program.size());
  const std::string path = program.data();
  return path.substr(0, path.find_last_of('\\') + 1) + "..\\..\\..\\";
}

struct Pipe {
  void operator()(std::FILE* stream) const { _pclose(stream); }
};

// What a command prints, line by line.
std::vector<std::string> OutputOf(const std::string& command) {
  const std::unique_ptr<std::FILE, Pipe> stream(_popen(command.c_str(), "rt"));
  std::vector<std::string> lines;
  for (std::array<char, 1024> line{};
       stream && std::fgets(line.data(), static_cast<int>(line.size()), stream.get()) != nullptr;) {
    std::string text = line.data();
    text.erase(text.find_last_not_of("\r\n") + 1);
    lines.push_back(text);
  }
  return lines;
}

class AdoOdbc : public testing::Test {
 protected:
  ~AdoOdbc() override {
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
  }
  // Brings the thread into its apartment.
  std::unique_ptr<platform::Database> database = NewDatabase();
  std::filesystem::path file = ScratchDatabase();
};

TEST_F(AdoOdbc, LateBoundScriptReadsWritesAndGetsErrors) {
  const std::string script = CheckoutFolder() + "tests\\contract\\windows\\late_bound.vbs";
  const std::vector<std::string> expected = {
      "closed 0",
      "open 1",
      "affected 1",
      "identity 2",
      "fields 6",
      "ID 3",
      "Fornavn 8",
      "Belopp 14",
      "Pris 6",
      "Dato 7",
      "Aktiv 11",
      "name 197sa",
      "by number 11",
      "year 2026 minute 5",
      "null True end False",
      "end True",
      "rows 2",
      "clone first second",
      "a row 6 by 1, first second",
      "the rest 2 by 1, 2 True, end True",
      "a field 1 by 2, first second",
      "rows at the end: 3021 Either BOF or EOF is True, or the current record has been deleted. "
      "Requested operation requires a current record.",
      "rows by name: 3265 Item cannot be found in the collection corresponding to the requested "
      "name or ordinal.",
      "still at 1",
      "rows, how many: 3001 Arguments are of the wrong type, are out of acceptable range, or are "
      "in conflict with one another.",
      "rows from a bookmark: 3251 Object or provider is not capable of performing requested "
      "operation.",
      "closed: 3704 Operation is not allowed when the object is closed.",
      "name: 3265 Item cannot be found in the collection corresponding to the requested name or "
      "ordinal.",
      "end: 3021 Either BOF or EOF is True, or the current record has been deleted. Requested "
      "operation requires a current record.",
      "open: 3705 Operation is not allowed when the object is open.",
      "transaction: -2147168242 No transaction is active.",
      "statement: -2147217900 [SQLite]near \"SELEC\": syntax error (1)",
      "errors 1 1",
      "left out: 3251 Object or provider is not capable of performing requested operation.",
      "connection: 3709 The connection cannot be used to perform this operation. It is either "
      "closed or invalid in this context.",
  };
  EXPECT_EQ(OutputOf("cscript //nologo " + script + " " + file.string()), expected);
}

TEST_F(AdoOdbc, DatabaseIsOpenedByItsWindowsPath) {
  ASSERT_FALSE(std::filesystem::exists(file));
  const auto connection = database->NewConnection();
  connection->Open(u"Driver=SQLite3;Database=" + file.u16string(), u"", u"", -1);
  connection->Execute(u"CREATE TABLE T (A integer)", -1);
  EXPECT_TRUE(std::filesystem::exists(file));
}

// What the component asks for is what ADO is asked for.
TEST_F(AdoOdbc, RecordsetHasTheCursorAndLockThatItWasOpenedWith) {
  const auto connection = database->NewConnection();
  connection->Open(u"Driver=SQLite3;Database=" + file.u16string(), u"", u"", -1);
  connection->Execute(u"CREATE TABLE T (A integer)", -1);
  struct Way {
    platform::CursorLocation location;
    platform::CursorType type;
    platform::LockType lock;
  };
  for (const auto& [location, type, lock] :
       {Way{platform::CursorLocation::Client, platform::CursorType::Static,
            platform::LockType::BatchOptimistic},
        Way{platform::CursorLocation::Server, platform::CursorType::Keyset,
            platform::LockType::Optimistic},
        Way{platform::CursorLocation::Server, platform::CursorType::ForwardOnly,
            platform::LockType::ReadOnly}}) {
    const auto rows = database->NewRecordset();
    rows->SetCursorLocation(location);
    rows->Open(u"SELECT A FROM T", *connection, type, lock, -1);
    const auto ado = ::windows::DispatchOf(*rows);
    EXPECT_EQ(NumberOf(*ado.get(), L"CursorLocation"), static_cast<LONG>(location));
    EXPECT_EQ(NumberOf(*ado.get(), L"CursorType"), static_cast<LONG>(type));
    EXPECT_EQ(NumberOf(*ado.get(), L"LockType"), static_cast<LONG>(lock));
  }
}

// Asynchronous calls, other kinds of commands and schemas are not implemented, and must not appear
// to work.
TEST_F(AdoOdbc, OptionsOtherThanUnspecifiedAreAWrongArgument) {
  const auto errorOf = [](auto&& call) {
    std::int32_t number = 0;
    try {
      call();
    } catch (const automation::AutomationError& error) {
      number = error.number();
    }
    return number;
  };
  constexpr std::int32_t kWrongArguments = 3001;
  const auto connectionText = u"Driver=SQLite3;Database=" + file.u16string();
  const auto connection = database->NewConnection();
  const auto rows = database->NewRecordset();
  for (const std::int32_t options : {0, 1, 8, 16, 128}) {
    EXPECT_EQ(errorOf([&] { connection->Open(connectionText, u"", u"", options); }),
              kWrongArguments);
  }
  connection->Open(connectionText, u"", u"", -1);
  for (const std::int32_t options : {0, 1, 8, 16, 128}) {
    EXPECT_EQ(errorOf([&] { connection->Execute(u"CREATE TABLE T (A integer)", options); }),
              kWrongArguments);
    EXPECT_EQ(errorOf([&] {
                rows->Open(u"SELECT 1", *connection, platform::CursorType::Static,
                           platform::LockType::BatchOptimistic, options);
              }),
              kWrongArguments);
  }
  // Nothing was executed.
  connection->Execute(u"CREATE TABLE T (A integer)", -1);
  rows->Open(u"SELECT 1", *connection, platform::CursorType::Static,
             platform::LockType::BatchOptimistic, -1);
}

// A system without the export by which the DLL recognises Wine.
class NotWine {
 public:
  NotWine() { Rename('n', 'N'); }
  NotWine(const NotWine&) = delete;
  NotWine& operator=(const NotWine&) = delete;
  ~NotWine() { Rename('N', 'n'); }

 private:
  // The last letter of the name in ntdll's own list of exports, in this process.
  static void Rename(char from, char to) {
    auto* const image = reinterpret_cast<char*>(GetModuleHandleW(L"ntdll.dll"));
    const auto& header = *reinterpret_cast<const IMAGE_NT_HEADERS*>(
        image + reinterpret_cast<const IMAGE_DOS_HEADER*>(image)->e_lfanew);
    const auto& place = header.OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_EXPORT];
    const auto& exports =
        *reinterpret_cast<const IMAGE_EXPORT_DIRECTORY*>(image + place.VirtualAddress);
    const auto* const names = reinterpret_cast<const DWORD*>(image + exports.AddressOfNames);
    const std::string wanted = std::string("wine_get_versio") + from;
    for (DWORD i = 0; i < exports.NumberOfNames; ++i) {
      char* const name = image + names[i];
      if (name == wanted) {
        char& letter = name[wanted.size() - 1];
        DWORD before = 0;
        EXPECT_TRUE(VirtualProtect(&letter, 1, PAGE_READWRITE, &before));
        letter = to;
        VirtualProtect(&letter, 1, before, &before);
        return;
      }
    }
    FAIL() << "ntdll does not export " << wanted;
  }
};

TEST_F(AdoOdbc, NothingIsRegisteredOrCreatedOnRealWindows) {
  const auto connection = NewAdoConnection();
  const auto registerServer = Export<Answer>("DllRegisterServer");
  const auto getClassObject =
      Export<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>("DllGetClassObject");
  ASSERT_TRUE(registerServer != nullptr && getClassObject != nullptr);
  ASSERT_EQ(Export<Answer>("DllUnregisterServer")(), S_OK);
  ::com::ComPtr<IUnknown> factory;
  {
    const NotWine windows;
    EXPECT_EQ(registerServer(), HRESULT_FROM_WIN32(ERROR_NOT_SUPPORTED));
    EXPECT_EQ(getClassObject(kConnectionClass, IID_IClassFactory, factory.ReceiveVoid()),
              CLASS_E_CLASSNOTAVAILABLE);
  }
  EXPECT_FALSE(factory);
  EXPECT_FALSE(HasKey(kConnectionKey));
  EXPECT_EQ(registerServer(), S_OK);
  EXPECT_EQ(getClassObject(kConnectionClass, IID_IClassFactory, factory.ReceiveVoid()), S_OK);
}

TEST_F(AdoOdbc, UnregisteringKeepsClassesServedByAnotherFile) {
  constexpr auto kServer =
      L"Software\\Classes\\CLSID\\{00000514-0000-0010-8000-00AA006D2EA4}\\InprocServer32";
  constexpr wchar_t kWinesOwn[] = L"C:\\windows\\system32\\msado15.dll";
  const auto connection = NewAdoConnection();
  const auto unregisterServer = Export<Answer>("DllUnregisterServer");
  ASSERT_NE(unregisterServer, nullptr);
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, kServer, nullptr, REG_SZ, kWinesOwn, sizeof kWinesOwn);
  EXPECT_EQ(unregisterServer(), S_OK);
  EXPECT_TRUE(HasKey(kConnectionKey));
  EXPECT_TRUE(HasKey(L"ADODB.Connection"));
  EXPECT_FALSE(HasKey(L"ADODB.Recordset"));
  EXPECT_EQ(Export<Answer>("DllRegisterServer")(), S_OK);
}

TEST_F(AdoOdbc, DllIsNotUnloadedOnceItHasCreatedAnObject) {
  { const auto connection = NewAdoConnection(); }
  constexpr int kMoreOftenThanItWasLoaded = 100;
  for (int i = 0; i < kMoreOftenThanItWasLoaded; ++i) {
    const HMODULE module = GetModuleHandleW(L"AdoOdbc.dll");
    ASSERT_NE(module, nullptr);
    FreeLibrary(module);
  }
  EXPECT_TRUE(NewAdoConnection());
}

TEST_F(AdoOdbc, DllIsInUseWhileAnyOfItsObjectsLives) {
  auto connection = NewAdoConnection();
  const auto canUnload = Export<Answer>("DllCanUnloadNow");
  ASSERT_NE(canUnload, nullptr) << "ADO's class is not AdoOdbc's";
  EXPECT_EQ(canUnload(), S_FALSE);

  // Has the type library loaded too.
  VARIANT errors = PropertyOf(*connection.get(), L"Errors");
  connection = {};
  EXPECT_EQ(canUnload(), S_FALSE) << "the collection outlives its connection";
  VariantClear(&errors);
  EXPECT_EQ(canUnload(), S_OK);
}

TEST_F(AdoOdbc, UnregisteringRemovesEverythingAndRegisteringRestoresIt) {
  const auto connection = NewAdoConnection();
  const auto unregisterServer = Export<Answer>("DllUnregisterServer");
  const auto registerServer = Export<Answer>("DllRegisterServer");
  ASSERT_TRUE(unregisterServer != nullptr && registerServer != nullptr);

  const std::vector<std::wstring> keys = {kConnectionKey, L"ADODB.Connection",
                                          L"ADODB.Connection.2.8", L"ADODB.Recordset",
                                          L"ADODB.Recordset.2.8"};
  EXPECT_EQ(unregisterServer(), S_OK);
  for (const auto& key : keys) {
    EXPECT_FALSE(HasKey(key));
  }
  EXPECT_EQ(unregisterServer(), S_OK) << "nothing is left to remove, and that is no failure";
  EXPECT_EQ(registerServer(), S_OK);
  for (const auto& key : keys) {
    EXPECT_TRUE(HasKey(key));
  }
}

}  // namespace
}  // namespace contract
