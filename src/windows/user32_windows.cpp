#include "windows/user32_windows.h"

#include <atomic>

#include "com/win32.h"
#include "windows/ansi_text.h"

namespace windows {
namespace {

std::atomic<platform::WindowProcedure> registeredProcedure = nullptr;
std::atomic<int> liveWindows = 0;

platform::WindowHandle Number(HWND window) {
  return static_cast<platform::WindowHandle>(reinterpret_cast<std::intptr_t>(window));
}

template <class Handle>
Handle HandleOf(std::int32_t number) {
  return reinterpret_cast<Handle>(static_cast<std::intptr_t>(number));
}

LRESULT CALLBACK Dispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
  if (message == WM_NCCREATE) {
    ++liveWindows;
  } else if (message == WM_NCDESTROY) {
    --liveWindows;
  }
  return registeredProcedure.load()(Number(window), static_cast<std::int32_t>(message),
                                    static_cast<std::int32_t>(wParam),
                                    static_cast<std::int32_t>(lParam));
}

}  // namespace

std::int32_t User32Windows::RegisterClass(const platform::WindowClass& windowClass) {
  const std::string menuName = Ansi(windowClass.menuName);
  const std::string className = Ansi(windowClass.className);
  const WNDCLASSA record = {.style = static_cast<UINT>(windowClass.style),
                            .lpfnWndProc = Dispatch,
                            .cbClsExtra = windowClass.classExtraBytes,
                            .cbWndExtra = windowClass.windowExtraBytes,
                            .hInstance = HandleOf<HINSTANCE>(windowClass.instance),
                            .hIcon = HandleOf<HICON>(windowClass.icon),
                            .hCursor = HandleOf<HCURSOR>(windowClass.cursor),
                            .hbrBackground = HandleOf<HBRUSH>(windowClass.background),
                            .lpszMenuName = menuName.c_str(),
                            .lpszClassName = className.c_str()};
  registeredProcedure = windowClass.procedure;
  return RegisterClassA(&record);
}

bool User32Windows::UnregisterClass(const std::u16string& className, std::int32_t instance) {
  return UnregisterClassA(Ansi(className).c_str(), HandleOf<HINSTANCE>(instance)) != FALSE;
}

platform::WindowHandle User32Windows::CreateWindow(const platform::WindowDescription& description) {
  return Number(CreateWindowExA(
      static_cast<DWORD>(description.extendedStyle), Ansi(description.className).c_str(),
      Ansi(description.title).c_str(), static_cast<DWORD>(description.style), description.x,
      description.y, description.width, description.height, HandleOf<HWND>(description.parent),
      HandleOf<HMENU>(description.menu), HandleOf<HINSTANCE>(description.instance), nullptr));
}

bool User32Windows::DestroyWindow(platform::WindowHandle window) {
  return ::DestroyWindow(HandleOf<HWND>(window)) != FALSE;
}

std::int32_t User32Windows::DefaultProcedure(platform::WindowHandle window, std::int32_t message,
                                             std::int32_t wParam, std::int32_t lParam) {
  return DefWindowProcA(HandleOf<HWND>(window), static_cast<UINT>(message),
                        static_cast<WPARAM>(wParam), lParam);
}

bool WindowsExist() {
  return liveWindows != 0;
}

}  // namespace windows
