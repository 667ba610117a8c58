// The DLL as a whole: what keeps it loaded, and the type library inside it.
#pragma once

#include "com/com_ptr.h"

namespace vilnor_dll {

// Keeps the DLL loaded while it exists; each object holds one.
class ModuleLock {
 public:
  ModuleLock();
  ModuleLock(const ModuleLock& other);
  ModuleLock& operator=(const ModuleLock&) = default;
  ~ModuleLock();
};

// Locks that a host holds through IClassFactory::LockServer.
void LockModule();
void UnlockModule();

// Whether the DLL must stay loaded: an object or a lock is alive, a notification window still has
// its procedure here, or a thread keeps the object that received its notifications.
bool ModuleInUse();

// The type library in the DLL's resources, and the description of one interface or class in it.
// Both throw the system's error.
com::ComPtr<ITypeLib> TypeLibrary();
com::ComPtr<ITypeInfo> TypeInfoOf(REFGUID identifier);

// Gives the calling thread the real outside world; every object does so at its creation, since an
// apartment calls it on no other thread.
void UseSystemPlatform();

}  // namespace vilnor_dll
