// The hidden window to which the link program posts its notifications.
#pragma once

#include <cstdint>

#include "platform/window_system.h"

namespace host {

// Fills the record for the class "KestraToVilnor" with `procedure` and registers it. Returns the
// class atom, 0 if registration fails (the class exists).
std::int32_t RegClass(platform::WindowClass& windowClass, platform::WindowProcedure procedure);

// Registers the class and creates the window, which is never shown. Returns its handle, 0 on
// failure.
platform::WindowHandle CreateForm();

// Destroys the window and unregisters the class, which stays registered while it has other windows.
void DestroyForm(platform::WindowHandle window);

// The window procedure: default processing first, then the reader of the announced result
// (exchange/request_kinds.h; wParam is the key), which finishes before this returns.
std::int32_t MsgHandling(platform::WindowHandle window, std::int32_t message, std::int32_t wParam,
                         std::int32_t lParam);

// The notification window created last on the thread.
platform::WindowHandle& NotifyWnd();

// The number of threads that have received a notification. Each keeps its own BVilnor from then on,
// so the component must stay loaded.
std::int32_t NotifyTargets();

}  // namespace host
