// The two classes that the component offers.
#pragma once

#include <array>
#include <string>

#include "windows/com_ptr.h"
#include "windows/win32.h"

namespace com {

struct ClassEntry {
  const CLSID& id;
  // The class's name in the type library; its program identifier is the library's name, a point and
  // this.
  const wchar_t* name;
  // A new object. Throws what its creation fails with.
  windows::ComPtr<IUnknown> (*create)();

  std::wstring ProgramId() const;
};

const std::array<ClassEntry, 2>& Classes();

}  // namespace com
