// The error trap that every procedure of BVilnor, DBVilnor and modBVilnor runs under: an error
// becomes a message box and the procedure's empty result; nothing reaches the host.
#pragma once

#include <string_view>
#include <type_traits>
#include <utility>

#include "automation/current_error.h"
#include "platform/dialogs.h"
#include "platform/procedure.h"
#include "platform/trace.h"
#include "util/attempt.h"

namespace util {

inline constexpr std::u16string_view kBoxTitle = u"Vilnor Link connection";

// The icon that a class or module shows when one of its procedures fails.
inline constexpr platform::Icon kBVilnorIcon = platform::Icon::Exclamation;
inline constexpr platform::Icon kDBVilnorIcon = platform::Icon::Critical;
inline constexpr platform::Icon kModBVilnorIcon = platform::Icon::Critical;

using platform::Procedure;

// The box "number description" + `procedure` (" in OpenWithNewCase") with an OK button. Returns
// whether the user has seen it.
bool ShowError(const automation::AutomationError& error, Procedure procedure, platform::Icon icon);

// Runs `action` and drops its error: inside the trap it has nowhere to go.
template <class Action>
void IgnoreErrors(Action&& action) {
  try {
    action();
  } catch (...) {  // NOLINT(bugprone-empty-catch): see above
  }
}

// An action that somebody else keeps alive.
class ActionRef {
 public:
  template <class Action>
  explicit ActionRef(const Action& action)
      : action_(&action), run_([](const void* run) { (*static_cast<const Action*>(run))(); }) {}
  void operator()() const { run_(action_); }

 private:
  const void* action_;
  void (*run_)(const void*);
};

// Reports the exception in flight: runs `beforeBox`, shows the box, ends the trace's line. Call it
// in a catch block.
Failure ReportError(Procedure procedure, platform::Icon icon, ActionRef beforeBox,
                    platform::Traced& traced) noexcept;

// Whether a procedure's result is the empty one.
template <class T>
bool IsEmpty(const T& result) {
  if constexpr (requires { result.empty(); }) {
    return result.empty();
  } else if constexpr (std::is_constructible_v<bool, const T&>) {
    return !static_cast<bool>(result);
  } else {
    return false;
  }
}

// Runs `body` under the trap. After an error `beforeBox` runs, then the box is shown; neither can
// fail.
template <class Body, class BeforeBox>
auto Try(Procedure procedure, platform::Icon icon, Body&& body, BeforeBox&& beforeBox)
    -> Attempt<std::invoke_result_t<Body>> {
  using Result = Attempt<std::invoke_result_t<Body>>;
  platform::Traced traced(procedure);
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
      body();
      traced.End(platform::Ending::Done);
      return Result();
    } else {
      Result result(body());
      if (traced.IsOn()) {
        traced.End(IsEmpty(result.Value()) ? platform::Ending::Empty : platform::Ending::Done);
      }
      return result;
    }
  } catch (...) {
    return Result(ReportError(procedure, icon, ActionRef(beforeBox), traced));
  }
}

template <class Body>
auto Try(Procedure procedure, platform::Icon icon, Body&& body)
    -> Attempt<std::invoke_result_t<Body>> {
  return Try(procedure, icon, std::forward<Body>(body), [] {});
}

// The same for the host and for callers that treat a failure as an empty result: "", 0, false,
// nothing.
template <class Body>
auto UnderTrap(Procedure procedure, platform::Icon icon, Body&& body)
    -> std::invoke_result_t<Body> {
  return Try(procedure, icon, std::forward<Body>(body)).OrEmpty();
}

// For a procedure without a trap, whose error goes to its caller: traced all the same.
template <class Body>
void WithoutTrap(Procedure procedure, Body&& body) {
  platform::Traced traced(procedure);
  try {
    body();
  } catch (...) {
    traced.End(platform::Ending::Raised, platform::Reason::None, automation::CurrentErrorNumber());
    throw;
  }
  traced.End(platform::Ending::Done);
}

}  // namespace util
