// The DLL as a whole: what keeps it loaded, and the type library inside it.
#pragma once

#include "com/com_ptr.h"

namespace com {

// Keeps the DLL loaded while it exists; each object holds one.
class ModuleLock {
 public:
  ModuleLock();
  ModuleLock(const ModuleLock&) = delete;
  ModuleLock& operator=(const ModuleLock&) = delete;
  ~ModuleLock();
};

// Locks that a host holds through IClassFactory::LockServer.
void LockModule();
void UnlockModule();

// Whether an object or a lock is alive.
bool IsModuleLocked();

// The description of one interface or class in the type library of the DLL's resources. Throws the
// system's error. The library is loaded at the first call and released with the last lock.
ComPtr<ITypeInfo> TypeInfoOf(REFGUID identifier);

}  // namespace com
