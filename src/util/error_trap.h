// The error trap that every procedure of BVilnor, DBVilnor and modBVilnor runs under: an error
// becomes a message box and the procedure's empty result; nothing reaches the host.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>

#include "automation/current_error.h"
#include "platform/dialogs.h"
#include "util/attempt.h"

namespace util {

inline constexpr std::u16string_view kBoxTitle = u"Vilnor Link connection";

// The icon that a class or module shows when one of its procedures fails.
inline constexpr platform::Icon kBVilnorIcon = platform::Icon::Exclamation;
inline constexpr platform::Icon kDBVilnorIcon = platform::Icon::Critical;
inline constexpr platform::Icon kModBVilnorIcon = platform::Icon::Critical;

// The box "number description" + `procedure` (" in OpenWithNewCase") with an OK button.
void ShowError(const automation::AutomationError& error, std::u16string_view procedure,
               platform::Icon icon);

// Runs `action` and drops its error: inside the trap it has nowhere to go.
template <class Action>
void IgnoreErrors(Action&& action) {
  try {
    action();
  } catch (...) {  // NOLINT(bugprone-empty-catch): see above
  }
}

// Runs `body` under the trap. After an error `beforeBox` runs, then the box is shown; neither can
// fail.
template <class Body, class BeforeBox>
auto Try(std::u16string_view procedure, platform::Icon icon, Body&& body, BeforeBox&& beforeBox)
    -> Attempt<std::invoke_result_t<Body>> {
  using Result = Attempt<std::invoke_result_t<Body>>;
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
      body();
      return Result();
    } else {
      return Result(body());
    }
  } catch (...) {
    const Failure failure{automation::CurrentErrorNumber()};
    std::optional<automation::AutomationError> error;
    IgnoreErrors([&] { error = automation::CurrentError(); });
    IgnoreErrors(std::forward<BeforeBox>(beforeBox));
    IgnoreErrors([&] { ShowError(error.value(), procedure, icon); });
    return Result(failure);
  }
}

template <class Body>
auto Try(std::u16string_view procedure, platform::Icon icon, Body&& body)
    -> Attempt<std::invoke_result_t<Body>> {
  return Try(procedure, icon, std::forward<Body>(body), [] {});
}

// The same for the host and for callers that treat a failure as an empty result: "", 0, false,
// nothing.
template <class Body>
auto UnderTrap(std::u16string_view procedure, platform::Icon icon, Body&& body)
    -> std::invoke_result_t<Body> {
  return Try(procedure, icon, std::forward<Body>(body)).OrEmpty();
}

}  // namespace util
