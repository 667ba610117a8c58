// The session settings that InitVilnor stores; every object of the thread shares them.
#pragma once

#include <cstdint>
#include <string>

#include "platform/thread_state.h"

namespace util {

struct SessionSettings {
  // The host's database connection string, passed to ADO as it is.
  std::u16string gConnectionParameter;
  // The host's language id, used only for the date format if the system returns none.
  std::int16_t gKestraLangID = 0;
  // 1 or 2; only SQL date literals depend on it.
  std::int16_t gDbType = 0;
  // What GetLanguageDateFormat returned when InitVilnor was called.
  std::u16string gDateFormat;
};

// The calling thread's settings (one set per apartment).
inline SessionSettings& CurrentSettings() {
  return platform::ThreadState<SessionSettings>();
}

}  // namespace util
