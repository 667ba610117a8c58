#include "host/notification_window.h"

#include <atomic>
#include <memory>

#include "exchange/envelope.h"
#include "exchange/request_kinds.h"
#include "host/b_vilnor.h"
#include "platform/platform.h"
#include "platform/thread_state.h"
#include "platform/trace.h"
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

// Whether only the link program can have sent the message. The system's own have numbers below
// WM_USER or, when they are registered by name, from 0xC000 on.
bool IsPrivate(std::int32_t message) {
  constexpr std::int32_t kFirst = 0x400;
  constexpr std::int32_t kLast = 0xBFFF;
  return message >= kFirst && message <= kLast;
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
    const auto window = platform::Current().windows.CreateWindow(description);
    if (window == 0) {
      platform::Note(u"CreateForm", platform::Reason::NoWindow);
    }
    return window;
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
  constexpr platform::Procedure kProcedure = u" in MsgHandling";
  const auto kind = exchange::KindOf(message);
  std::int32_t result = 0;
  UnderTrap(kind ? kProcedure : kProcedure.TracedIfItFails(), kModBVilnorIcon, [&] {
    result = platform::Current().windows.DefaultProcedure(window, message, wParam, lParam);
    if (kind) {
      NotifyTarget().ReadResult(*kind, wParam);
    } else if (IsPrivate(message)) {
      platform::Note(kProcedure, platform::Reason::UnknownMessage);
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
