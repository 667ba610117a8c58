#include "host/notification_window.h"

#include <atomic>
#include <memory>

#include "exchange/envelope.h"
#include "exchange/request_kinds.h"
#include "host/b_vilnor.h"
#include "platform/platform.h"
#include "platform/thread_state.h"
#include "util/error_trap.h"

namespace host {
namespace {

using util::kModBVilnorIcon;
using util::UnderTrap;

struct NotificationState {
  platform::WindowHandle gNotifyWnd = 0;
  // Kept: not the host's object but one of the component's own, created at the first notification
  // and never released while the component is loaded. No host listens to its events.
  std::unique_ptr<BVilnor> gNotifyTarget;
};

std::atomic<std::int32_t> notifyTargets = 0;

NotificationState& State() {
  return platform::ThreadState<NotificationState>();
}

BVilnor& NotifyTarget() {
  NotificationState& state = State();
  if (!state.gNotifyTarget) {
    state.gNotifyTarget = std::make_unique<BVilnor>();
    ++notifyTargets;
  }
  return *state.gNotifyTarget;
}

}  // namespace

std::int32_t RegClass(platform::WindowClass& windowClass, platform::WindowProcedure procedure) {
  return UnderTrap(u" in RegClass", kModBVilnorIcon, [&] {
    windowClass = {};
    windowClass.procedure = procedure;
    windowClass.className = exchange::kNotificationClass;
    return platform::Current().windows.RegisterClass(windowClass);
  });
}

platform::WindowHandle CreateForm() {
  return UnderTrap(u" in CreateForm", kModBVilnorIcon, [] {
    platform::WindowClass windowClass;
    RegClass(windowClass, MsgHandling);
    platform::WindowDescription description;
    description.className = exchange::kNotificationClass;
    description.title = u"VB Window";
    description.width = 640;
    description.height = 480;
    return platform::Current().windows.CreateWindow(description);
  });
}

void DestroyForm(platform::WindowHandle window) {
  UnderTrap(u" in DestroyForm", kModBVilnorIcon, [&] {
    auto& windows = platform::Current().windows;
    windows.DestroyWindow(window);
    windows.UnregisterClass(std::u16string(exchange::kNotificationClass), 0);
  });
}

std::int32_t MsgHandling(platform::WindowHandle window, std::int32_t message, std::int32_t wParam,
                         std::int32_t lParam) {
  std::int32_t result = 0;
  UnderTrap(u" in MsgHandling", kModBVilnorIcon, [&] {
    result = platform::Current().windows.DefaultProcedure(window, message, wParam, lParam);
    if (const auto kind = exchange::KindOf(message)) {
      NotifyTarget().ReadResult(*kind, wParam);
    }
  });
  return result;
}

platform::WindowHandle& NotifyWnd() {
  return State().gNotifyWnd;
}

std::int32_t NotifyTargets() {
  return notifyTargets;
}

}  // namespace host
