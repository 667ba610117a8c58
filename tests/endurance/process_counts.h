// What this process holds of the system, in Wine, whose own functions for it are mostly stubs.
#pragma once

#include "com/win32.h"

namespace endurance {

struct ProcessCounts {
  SIZE_T privateKilobytes = 0;
  int handles = 0;
  int gdiObjects = 0;
  int userObjects = 0;
  int windows = 0;
};

ProcessCounts CountNow();

}  // namespace endurance
