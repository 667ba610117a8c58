#pragma once

#include "platform/window_system.h"

namespace windows {

// user32's window calls in their ANSI forms. Every window has the procedure of the class that was
// registered last: a window class belongs to the whole process, and the component has but one.
class User32Windows : public platform::WindowSystem {
 public:
  std::int32_t RegisterClass(const platform::WindowClass& windowClass) override;
  bool UnregisterClass(const std::u16string& className, std::int32_t instance) override;
  platform::WindowHandle CreateWindow(const platform::WindowDescription& description) override;
  bool DestroyWindow(platform::WindowHandle window) override;
  std::int32_t DefaultProcedure(platform::WindowHandle window, std::int32_t message,
                                std::int32_t wParam, std::int32_t lParam) override;
};

// Whether a window of any thread still has its procedure in this module, which therefore has to
// stay loaded. A window that ended with its thread, unannounced, counts on: its class stays
// registered.
bool WindowsExist();

}  // namespace windows
