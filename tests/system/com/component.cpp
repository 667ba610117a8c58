#include "system/com/component.h"

#include <algorithm>
#include <array>

#include "com/wide_text.h"
#include "contract/environment.h"
#include "system/com/neighbour.h"

namespace system_tests {
namespace {

constexpr const char* kWindowClass = "KestraToVilnor";

}  // namespace

std::wstring ProgramFolder() {
  std::array<wchar_t, 1024> path{};
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  const std::wstring program = path.data();
  return program.substr(0, program.find_last_of(L'\\'));
}

std::wstring DllPath() {
  return ProgramFolder() + L"\\Vilnor.dll";
}

std::wstring AdoPath() {
  return ProgramFolder() + L"\\..\\ado-odbc\\AdoOdbc.dll";
}

std::wstring NeighbourPath() {
  return ProgramFolder() + L"\\..\\neighbour\\" + kNeighbour;
}

Module::~Module() {
  if (loaded()) {
    FreeLibrary(handle_);
  }
}

HRESULT Module::GetClassObject(const CLSID& classId, const IID& interfaceId, void** object) const {
  const auto get = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
      reinterpret_cast<void*>(GetProcAddress(handle_, "DllGetClassObject")));
  return get(classId, interfaceId, object);
}

HRESULT Module::Call(const char* name) const {
  const auto call = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
      reinterpret_cast<void*>(GetProcAddress(handle_, name)));
  return call();
}

ComPtr<_BVilnor> NewBVilnor() {
  ComPtr<_BVilnor> session;
  CoCreateInstance(CLSID_BVilnor, nullptr, CLSCTX_INPROC_SERVER, IID__BVilnor,
                   session.ReceiveVoid());
  return session;
}

ErrorInformation TakeErrorInformation() {
  ComPtr<IErrorInfo> information;
  if (GetErrorInfo(0, information.Receive()) != S_OK) {
    return {};
  }
  Bstr source;
  Bstr description;
  information->GetSource(source.Receive());
  information->GetDescription(description.Receive());
  return {.present = true,
          .source = com::Wide(source.Text()),
          .description = com::Wide(description.Text())};
}

void Init(_BVilnor& session, std::u16string_view connectionString) {
  TextArgument connection(connectionString);
  short language = 1;
  // Access writes dates as #...#.
  short type = contract::GivenProduct() == "Access" ? 1 : 2;
  session.InitVilnor(connection.Reference(), &language, &type);
}

std::vector<HWND> NotificationWindowHandles() {
  std::vector<HWND> windows;
  HWND window = nullptr;
  while ((window = FindWindowExA(nullptr, window, kWindowClass, nullptr)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId()) {
      windows.push_back(window);
    }
  }
  return windows;
}

int NotificationWindows() {
  return static_cast<int>(NotificationWindowHandles().size());
}

HWND NotificationWindowOf(DWORD thread) {
  const auto windows = NotificationWindowHandles();
  const auto found = std::ranges::find_if(
      windows, [&](HWND window) { return GetWindowThreadProcessId(window, nullptr) == thread; });
  return found == windows.end() ? nullptr : *found;
}

void EndNotificationWindows() {
  for (HWND window : NotificationWindowHandles()) {
    DestroyWindow(window);
  }
  UnregisterClassA(kWindowClass, nullptr);
}

}  // namespace system_tests
