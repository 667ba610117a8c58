// The DLL itself: what keeps it loaded, and the type library inside it.
#pragma once

#include "com/com_ptr.h"
#include "com/win32.h"

namespace ado_dll {

// Lives in every object that the DLL hands out; while there is one, or a lock by LockModule(), the
// DLL stays loaded.
class ModuleUse {
 public:
  ModuleUse();
  ~ModuleUse();
  ModuleUse(const ModuleUse&) = delete;
  ModuleUse& operator=(const ModuleUse&) = delete;
};

void LockModule(bool lock);
bool IsModuleUsed();

// What the type library says of an interface; null when it cannot be loaded. The library is loaded
// at the first call and released with the DLL's last object.
com::ComPtr<ITypeInfo> TypeInfoOf(const IID& interfaceId);

}  // namespace ado_dll
