// The two classes that the component offers.
#pragma once

#include <array>
#include <string>

#include "com/com_ptr.h"
#include "com/win32.h"

namespace vilnor_dll {

struct ClassEntry {
  const CLSID& id;
  // The class's name in the type library; its program identifier is the library's name, a point and
  // this.
  const wchar_t* name;
  // A new object. Throws what its creation fails with.
  com::ComPtr<IUnknown> (*create)();

  std::wstring ProgramId() const;
};

const std::array<ClassEntry, 2>& Classes();

}  // namespace vilnor_dll
