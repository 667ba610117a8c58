#include "windows/loading.h"

#include "com/interfaces.h"
#include "windows/com_error.h"
#include "windows/com_ptr.h"
#include "windows/harness.h"

namespace benchmarks {
namespace {

using windows::Check;
using windows::ComPtr;

// So many that the first second of a Wine session, whose own programs still start, does not count.
constexpr int kRepetitions = 200;

std::wstring BesideTheProgram(const wchar_t* library) {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), MAX_PATH));
  return path.substr(0, path.find_last_of(L'\\') + 1) + library;
}

HMODULE Load(const std::wstring& library) {
  const HMODULE loaded = LoadLibraryW(library.c_str());
  if (loaded == nullptr) {
    Fail("a library cannot be loaded");
  }
  return loaded;
}

void Unload(HMODULE loaded, const std::wstring& library) {
  FreeLibrary(loaded);
  if (GetModuleHandleW(library.c_str()) != nullptr) {
    Fail("a library stays loaded, so that loading it cannot be measured again");
  }
}

// What a host's first call does once the registry has named the library.
void MakeFirstObject(const std::wstring& library, const CLSID& classId) {
  const HMODULE loaded = Load(library);
  const auto getClassObject = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
      reinterpret_cast<void*>(GetProcAddress(loaded, "DllGetClassObject")));
  {
    ComPtr<IClassFactory> factory;
    Check(getClassObject(classId, IID_IClassFactory, factory.ReceiveVoid()));
    ComPtr<IUnknown> object;
    Check(factory->CreateInstance(nullptr, IID_IUnknown, object.ReceiveVoid()));
  }
  Unload(loaded, library);
}

// A class and a window that the system shows to nobody, as an object might have for its messages.
void MakeMessageWindow() {
  constexpr const char* kClass = "BareServerWindow";
  WNDCLASSA record{};
  record.lpfnWndProc = DefWindowProcA;
  record.lpszClassName = kClass;
  RegisterClassA(&record);
  const HWND window =
      CreateWindowExA(0, kClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
  if (window == nullptr) {
    Fail("a window cannot be made");
  }
  DestroyWindow(window);
  UnregisterClassA(kClass, nullptr);
}

}  // namespace

void MeasureLoading(Computer& computer) {
  const std::wstring vilnor = BesideTheProgram(L"Vilnor.dll");
  const std::wstring bare = BesideTheProgram(L"bare_server.dll");
  Measure("loading",
          {{.name = "Vilnor", .run = [&] { MakeFirstObject(vilnor, CLSID_BVilnor); }},
           {.name = "Vilnor, no object", .run = [&] { Unload(Load(vilnor), vilnor); }},
           {.name = "bare server", .run = [&] { MakeFirstObject(bare, CLSID_BVilnor); }},
           {.name = "bare server and a window",
            .run =
                [&] {
                  MakeFirstObject(bare, CLSID_BVilnor);
                  MakeMessageWindow();
                }}},
          kRepetitions, 2);
  computer.MustBeQuiet();
}

}  // namespace benchmarks
