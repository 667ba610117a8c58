#include "windows/loading.h"

#include <array>
#include <cstddef>
#include <string>

#include "com/com_error.h"
#include "com/com_ptr.h"
#include "vilnor_dll/interfaces.h"
#include "windows/harness.h"

namespace benchmarks {
namespace {

using com::Check;
using com::ComPtr;

// Each in its own process, because Vilnor.dll stays loaded from its first object on.
constexpr int kRepetitions = 30;

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
  FreeLibrary(loaded);
}

// A class and an invisible window, as an object might have for its messages.
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

struct Loading {
  const char* name;
  void (*run)();
};

const std::array<Loading, 4> kLoadings = {
    Loading{"Vilnor", [] { MakeFirstObject(BesideTheProgram(L"Vilnor.dll"), CLSID_BVilnor); }},
    Loading{"Vilnor, no object",
            [] {
              const std::wstring vilnor = BesideTheProgram(L"Vilnor.dll");
              Unload(Load(vilnor), vilnor);
            }},
    Loading{"bare server",
            [] { MakeFirstObject(BesideTheProgram(L"bare_server.dll"), CLSID_BVilnor); }},
    Loading{"bare server and a window",
            [] {
              MakeFirstObject(BesideTheProgram(L"bare_server.dll"), CLSID_BVilnor);
              MakeMessageWindow();
            }},
};

// Runs this program again for one loading; its exit code is the result.
double MicrosecondsOfItsOwn(std::size_t loading) {
  std::wstring program(MAX_PATH, L'\0');
  program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
  std::wstring command = L'"' + program + L"\" --loading " + std::to_wstring(loading);
  STARTUPINFOW start{};
  start.cb = sizeof start;
  PROCESS_INFORMATION process{};
  if (CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                     &process) == FALSE) {
    Fail("the program cannot be started");
  }
  WaitForSingleObject(process.hProcess, INFINITE);
  DWORD microseconds = 0;
  GetExitCodeProcess(process.hProcess, &microseconds);
  CloseHandle(process.hProcess);
  CloseHandle(process.hThread);
  return microseconds;
}

}  // namespace

int MicrosecondsOfLoading(std::size_t loading) {
  // What the system does for a program's first object and first window is not measured.
  constexpr int kWarmUps = 5;
  for (int i = 0; i < kWarmUps; ++i) {
    kLoadings.back().run();
    DestroyWindow(CreateWindowExA(0, "STATIC", "", WS_OVERLAPPED, 0, 0, 0, 0, nullptr, nullptr,
                                  nullptr, nullptr));
  }
  const double start = Now();
  kLoadings.at(loading).run();
  return static_cast<int>((Now() - start) * 1e6);
}

void MeasureLoading(Computer& computer) {
  for (int repetition = 0; repetition < kRepetitions; ++repetition) {
    for (std::size_t i = 0; i < kLoadings.size(); ++i) {
      Print(std::string("loading/") + kLoadings.at(i).name, MicrosecondsOfItsOwn(i) * 1e3);
    }
  }
  computer.MustBeQuiet();
}

}  // namespace benchmarks
