#pragma once

#include "platform/window_system.h"

namespace windows {

// user32's window calls in their ANSI forms. Every window uses the procedure of the class
// registered last: a window class belongs to the whole process, and the component has only one.
class User32Windows : public platform::WindowSystem {
 public:
  std::int32_t RegisterClass(const platform::WindowClass& windowClass) override;
  bool UnregisterClass(const std::u16string& className, std::int32_t instance) override;
  platform::WindowHandle CreateWindow(const platform::WindowDescription& description) override;
  bool DestroyWindow(platform::WindowHandle window) override;
  std::int32_t DefaultProcedure(platform::WindowHandle window, std::int32_t message,
                                std::int32_t wParam, std::int32_t lParam) override;
};

// Whether a window of any thread still has its procedure in this module, which must then stay
// loaded. A window that ended with its thread, without a message, still counts: its class stays
// registered.
bool WindowsExist();

}  // namespace windows
