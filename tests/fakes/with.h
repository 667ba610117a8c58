// A platform with some ports replaced.
#pragma once

#include <type_traits>

#include "platform/platform.h"

namespace fakes {

template <class Kind>
Kind& Pick(Kind& own) {
  return own;
}

template <class Kind, class First, class... Rest>
Kind& Pick(Kind& own, First& first, Rest&... rest) {
  if constexpr (std::is_base_of_v<Kind, First>) {
    return first;
  } else {
    return Pick(own, rest...);
  }
}

// `base` with each of `changed` replacing the port of its kind. The caller keeps all of them alive.
template <class... Changed>
platform::Platform With(const platform::Platform& base, Changed&... changed) {
  return {.clock = Pick(base.clock, changed...),
          .locale = Pick(base.locale, changed...),
          .dialogs = Pick(base.dialogs, changed...),
          .processes = Pick(base.processes, changed...),
          .files = Pick(base.files, changed...),
          .userSettings = Pick(base.userSettings, changed...),
          .registry = Pick(base.registry, changed...),
          .database = Pick(base.database, changed...),
          .resultDocuments = Pick(base.resultDocuments, changed...),
          .windows = Pick(base.windows, changed...),
          .trace = Pick(base.trace, changed...)};
}

}  // namespace fakes
