// The hidden window to which the link program posts its notifications.
#pragma once

#include <cstdint>

#include "platform/window_system.h"

namespace host {

// Fills the record for the class "KestraToVilnor" with `procedure` and registers it. The class
// atom, 0 when registration fails (the class exists).
std::int32_t RegClass(platform::WindowClass& windowClass, platform::WindowProcedure procedure);

// Registers the class and creates the window, which is never shown. The handle, 0 on failure.
platform::WindowHandle CreateForm();

// Destroys the window and unregisters the class, which stays while it has other windows.
void DestroyForm(platform::WindowHandle window);

// The window's procedure: default processing first, then the reader of the result that the message
// tells of (exchange/request_kinds.h; the key is wParam), which runs to its end before this
// returns.
std::int32_t MsgHandling(platform::WindowHandle window, std::int32_t message, std::int32_t wParam,
                         std::int32_t lParam);

// The notification window created last on the thread.
platform::WindowHandle& NotifyWnd();

// How many threads have received a notification: each keeps a BVilnor of its own from then on,
// so the component must stay loaded.
std::int32_t NotifyTargets();

}  // namespace host
