// The error trap that every procedure of BVilnor, DBVilnor and modBVilnor runs under: an error
// becomes a message box and the procedure's empty result; nothing reaches the host.
#pragma once

#include <cstdint>
#include <exception>
#include <string_view>
#include <type_traits>
#include <utility>

#include "automation/automation_error.h"
#include "platform/dialogs.h"

namespace util {

inline constexpr std::u16string_view kBoxTitle = u"Vilnor Link connection";

// What a class or module shows when one of its procedures fails.
inline constexpr platform::Icon kBVilnorIcon = platform::Icon::Exclamation;
inline constexpr platform::Icon kDBVilnorIcon = platform::Icon::Critical;
inline constexpr platform::Icon kModBVilnorIcon = platform::Icon::Critical;

// The error in flight as an AutomationError: itself, 7 for exhausted memory, 440 for anything else.
// To be called in a catch block.
automation::AutomationError CurrentError();

// The box "number description" + `place` (" in OpenWithNewCase") with an OK button.
void ShowError(const automation::AutomationError& error, std::u16string_view place,
               platform::Icon icon);

// How many error boxes the thread has shown. An operation that another one calls reports its own
// failure and returns as if empty; the caller for whom that matters compares before and after.
std::uint32_t ErrorsShown();

// Runs `action` and drops its error: inside the trap it has nowhere to go.
template <class Action>
void DroppingErrors(Action&& action) {
  try {
    action();
  } catch (...) {  // NOLINT(bugprone-empty-catch): see above
  }
}

// Runs `body` under the trap. After an error the box is shown, then `afterBox` runs, also where the
// box could not be shown, and the result is empty: "", 0, false, nothing.
template <class Body, class AfterBox>
auto Guarded(std::u16string_view place, platform::Icon icon, Body&& body, AfterBox&& afterBox)
    -> std::invoke_result_t<Body> {
  try {
    return body();
  } catch (...) {
    DroppingErrors([&] { ShowError(CurrentError(), place, icon); });
  }
  DroppingErrors(std::forward<AfterBox>(afterBox));
  return std::invoke_result_t<Body>();
}

template <class Body>
auto Guarded(std::u16string_view place, platform::Icon icon, Body&& body)
    -> std::invoke_result_t<Body> {
  return Guarded(place, icon, std::forward<Body>(body), [] {});
}

}  // namespace util
