#pragma once

#include <vector>

#include "com/win32.h"

namespace contract {

// While it lives, new DOM documents of this process have the properties that Windows gives them
// (Wine's differ): asynchronous, validated, externals resolved. It records what they are loaded
// from.
class DomDouble {
 public:
  DomDouble();
  DomDouble(const DomDouble&) = delete;
  DomDouble& operator=(const DomDouble&) = delete;
  ~DomDouble();

  // The type of each argument of `load`.
  std::vector<VARTYPE> loadedFrom;
  // Makes every call of `load` fail unless its argument is a name.
  bool refusesMemory = false;

 private:
  DWORD registration_ = 0;
};

}  // namespace contract
