// The component under test: Vilnor.dll beside the test program, registered for the test run.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "com/bstr.h"
#include "com/com_ptr.h"
#include "vilnor_dll/interfaces.h"

namespace system_tests {

using com::Bstr;
using com::ComPtr;

// The test program's folder, without a trailing backslash.
std::wstring ProgramFolder();
std::wstring DllPath();
// The stand-in for ADO, when it has been built.
std::wstring AdoPath();

// A DLL loaded while the object lives, with the functions that every component exports.
class Module {
 public:
  explicit Module(const std::wstring& path) : handle_(LoadLibraryW(path.c_str())) {}
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;
  ~Module();

  bool loaded() const { return handle_ != nullptr; }
  HRESULT RegisterServer() const { return Call("DllRegisterServer"); }
  HRESULT UnregisterServer() const { return Call("DllUnregisterServer"); }
  HRESULT CanUnloadNow() const { return Call("DllCanUnloadNow"); }
  HRESULT GetClassObject(const CLSID& classId, const IID& interfaceId, void** object) const;

 private:
  HRESULT Call(const char* name) const;

  HMODULE handle_;
};

// An object of the registered component; null when it cannot be created.
ComPtr<_BVilnor> NewBVilnor();

// The thread's error information, which is cleared by reading it.
struct ErrorInformation {
  bool present = false;
  std::wstring source;
  std::wstring description;
};
ErrorInformation TakeErrorInformation();

// A text by reference, as a host has it.
class TextArgument {
 public:
  explicit TextArgument(std::u16string_view text) : text_(Bstr(text).Detach()) {}
  TextArgument(const TextArgument&) = delete;
  TextArgument& operator=(const TextArgument&) = delete;
  ~TextArgument() { SysFreeString(text_); }
  BSTR* Reference() { return &text_; }
  std::u16string Text() const { return com::TextOf(text_); }

 private:
  BSTR text_;
};

// InitVilnor with language 1 and database type 2. Expects S_OK and no box.
void Init(_BVilnor& session, std::u16string_view connectionString);

// The process's windows of the class "KestraToVilnor", topmost first.
std::vector<HWND> NotificationWindowHandles();
int NotificationWindows();
// A thread's topmost one; null when it has none.
HWND NotificationWindowOf(DWORD thread);
// Destroys those of the calling thread, and their class with the last of them.
void EndNotificationWindows();

// Waits at most ten seconds for `condition`, dispatching the thread's messages.
template <class Condition>
bool PumpUntil(Condition&& condition) {
  const ULONGLONG end = GetTickCount64() + 10'000;
  while (!condition()) {
    if (GetTickCount64() > end) {
      return false;
    }
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
      DispatchMessageW(&message);
    }
    MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
  }
  return true;
}

}  // namespace system_tests
