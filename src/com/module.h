// The DLL as a whole: what keeps it loaded, and the type library inside it.
#pragma once

#include "com/com_ptr.h"

namespace com {

// Keeps the DLL loaded for as long as it exists; each object holds one.
class ModuleLock {
 public:
  ModuleLock();
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
  ~ModuleLock();
};

// The locks of IClassFactory::LockServer.
void LockModule();
void UnlockModule();

// Whether an object or a lock is alive.
bool IsModuleLocked();

// The type information of an interface or class, from the type library in the DLL's resources.
// Throws the system's error. The first call loads the library; it is released with the last lock.
ComPtr<ITypeInfo> TypeInfoOf(REFGUID identifier);

}  // namespace com
