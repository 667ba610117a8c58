#pragma once

#include <cstdint>
#include <string>

namespace platform {

using WindowHandle = std::int32_t;
// Maps (window, message, wParam, lParam) to the message's result.
using WindowProcedure = std::int32_t (*)(WindowHandle window, std::int32_t message,
                                         std::int32_t wParam, std::int32_t lParam);

// The record given to RegisterClassA, field by field.
struct WindowClass {
  std::int32_t style = 0;
  WindowProcedure procedure = nullptr;
  std::int32_t classExtraBytes = 0;
  std::int32_t windowExtraBytes = 0;
  std::int32_t instance = 0;
  std::int32_t icon = 0;
  std::int32_t cursor = 0;
  std::int32_t background = 0;
  std::u16string menuName;
  std::u16string className;
};

// The arguments of CreateWindowExA.
struct WindowDescription {
  std::int32_t extendedStyle = 0;
  std::u16string className;
  std::u16string title;
  std::int32_t style = 0;
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
  WindowHandle parent = 0;
  std::int32_t menu = 0;
  std::int32_t instance = 0;
};

// user32's window calls in their ANSI forms; failures are returned, never thrown.
class WindowSystem {
 public:
  virtual ~WindowSystem() = default;
  // The class atom, 0 on failure (the class exists).
  virtual std::int32_t RegisterClass(const WindowClass& windowClass) = 0;
  virtual bool UnregisterClass(const std::u16string& className, std::int32_t instance) = 0;
  // 0 on failure.
  virtual WindowHandle CreateWindow(const WindowDescription& description) = 0;
  virtual bool DestroyWindow(WindowHandle window) = 0;
  virtual std::int32_t DefaultProcedure(WindowHandle window, std::int32_t message,
                                        std::int32_t wParam, std::int32_t lParam) = 0;
};

}  // namespace platform
