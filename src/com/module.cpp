#include "com/module.h"

#include <utility>

#include "com/com_error.h"
#include "com/own_module.h"

namespace com {
namespace {

// Objects of several apartments share these, so they are accessed under the lock only. The library
// is a raw pointer: a destructor would run at process exit, when COM is gone.
SRWLOCK gLock = SRWLOCK_INIT;
int gLocks = 0;
ITypeLib* gLibrary = nullptr;

class Locked {
 public:
  Locked() { AcquireSRWLockExclusive(&gLock); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;
  ~Locked() { ReleaseSRWLockExclusive(&gLock); }
};

ComPtr<ITypeLib> TypeLibrary() {
  const Locked locked;
  if (gLibrary == nullptr) {
    ComPtr<ITypeLib> library;
    Check(LoadTypeLibEx(OwnModulePath().c_str(), REGKIND_NONE, library.Receive()));
    gLibrary = library.Detach();
  }
  return ComPtr<ITypeLib>(gLibrary);
}

}  // namespace

ModuleLock::ModuleLock() {
  LockModule();
}

ModuleLock::~ModuleLock() {
  UnlockModule();
}

void LockModule() {
  const Locked locked;
  ++gLocks;
}

void UnlockModule() {
  const Locked locked;
  --gLocks;
  if (gLocks == 0 && gLibrary != nullptr) {
    std::exchange(gLibrary, nullptr)->Release();
  }
}

bool IsModuleLocked() {
  const Locked locked;
  return gLocks != 0;
}

ComPtr<ITypeInfo> TypeInfoOf(REFGUID identifier) {
  ComPtr<ITypeInfo> information;
  Check(TypeLibrary()->GetTypeInfoOfGuid(identifier, information.Receive()));
  return information;
}

}  // namespace com
