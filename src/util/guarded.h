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

namespace util {

inline constexpr std::u16string_view kBoxTitle = u"Vilnor Link connection";

// What a class or module shows when one of its procedures fails.
inline constexpr platform::Icon kBVilnorIcon = platform::Icon::Exclamation;
inline constexpr platform::Icon kDBVilnorIcon = platform::Icon::Critical;
inline constexpr platform::Icon kModBVilnorIcon = platform::Icon::Critical;

// The box "number description" + `place` (" in OpenWithNewCase") with an OK button.
void ShowError(const automation::AutomationError& error, std::u16string_view place,
               platform::Icon icon);

// What a procedure under the trap gave. After an error the user has been told of it, `error` is its
// number and the value is the empty one.
template <class T>
struct Attempt {
  T value{};
  std::optional<std::int32_t> error = std::nullopt;
};
template <>
struct Attempt<void> {
  std::optional<std::int32_t> error = std::nullopt;
};

// Runs `action` and drops its error: inside the trap it has nowhere to go.
template <class Action>
void DroppingErrors(Action&& action) {
  try {
    action();
  } catch (...) {  // NOLINT(bugprone-empty-catch): see above
  }
}

// Runs `body` under the trap. After an error `beforeBox` runs, then the box is shown; neither can
// fail.
template <class Body, class BeforeBox>
auto Try(std::u16string_view place, platform::Icon icon, Body&& body, BeforeBox&& beforeBox)
    -> Attempt<std::invoke_result_t<Body>> {
  using Result = Attempt<std::invoke_result_t<Body>>;
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
      body();
      return {};
    } else {
      return {body()};
    }
  } catch (...) {
    Result failed;
    failed.error = automation::CurrentErrorNumber();
    std::optional<automation::AutomationError> error;
    DroppingErrors([&] { error = automation::CurrentError(); });
    DroppingErrors(std::forward<BeforeBox>(beforeBox));
    DroppingErrors([&] { ShowError(error.value(), place, icon); });
    return failed;
  }
}

template <class Body>
auto Try(std::u16string_view place, platform::Icon icon, Body&& body)
    -> Attempt<std::invoke_result_t<Body>> {
  return Try(place, icon, std::forward<Body>(body), [] {});
}

// The same for a caller to whom a failure is as good as nothing: "", 0, false, nothing.
template <class Body>
auto Guarded(std::u16string_view place, platform::Icon icon, Body&& body)
    -> std::invoke_result_t<Body> {
  if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
    Try(place, icon, std::forward<Body>(body));
  } else {
    return Try(place, icon, std::forward<Body>(body)).value;
  }
}

}  // namespace util
