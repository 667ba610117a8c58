#include "windows/system_clock.h"

#include "automation/date.h"
#include "com/win32.h"

namespace windows {

automation::Date SystemClock::Now() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return automation::MakeDate({.year = now.wYear,
                               .month = now.wMonth,
                               .day = now.wDay,
                               .hour = now.wHour,
                               .minute = now.wMinute,
                               .second = now.wSecond});
}

}  // namespace windows
