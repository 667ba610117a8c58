#pragma once

#include <vector>

#include "com/win32.h"

namespace contract {

// While it lives, this process's DOM documents are MSXML's with the properties that Windows gives a
// new one (Wine's are other): asynchronous, validated, with what they name resolved. What they are
// loaded from is noted.
class DomDouble {
 public:
  DomDouble();
  DomDouble(const DomDouble&) = delete;
  DomDouble& operator=(const DomDouble&) = delete;
  ~DomDouble();

  // The type of each argument of `load`.
  std::vector<VARTYPE> loadedFrom;
  // Then a call of `load` with anything but a name fails.
  bool refusesMemory = false;

 private:
  DWORD registration_ = 0;
};

}  // namespace contract
