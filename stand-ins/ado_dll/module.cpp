#include "ado_dll/module.h"

#include "com/own_module.h"

namespace ado_dll {
namespace {

// Objects of several apartments share these, so they are touched under the lock only. The library
// has no owner that the process's end would run: COM is gone by then.
SRWLOCK gLock = SRWLOCK_INIT;
int gUses = 0;
ITypeLib* gLibrary = nullptr;

class Locked {
 public:
  Locked() { AcquireSRWLockExclusive(&gLock); }
  Locked(const Locked&) = delete;
  Locked& operator=(const Locked&) = delete;
  ~Locked() { ReleaseSRWLockExclusive(&gLock); }
};

}  // namespace

ModuleUse::ModuleUse() {
  LockModule(true);
}

ModuleUse::~ModuleUse() {
  LockModule(false);
}

void LockModule(bool lock) {
  const Locked locked;
  gUses += lock ? 1 : -1;
  if (gUses == 0 && gLibrary != nullptr) {
    gLibrary->Release();
    gLibrary = nullptr;
  }
}

bool IsModuleUsed() {
  const Locked locked;
  return gUses > 0;
}

com::ComPtr<ITypeInfo> TypeInfoOf(const IID& interfaceId) {
  const Locked locked;
  com::ComPtr<ITypeInfo> info;
  if (gLibrary == nullptr &&
      FAILED(LoadTypeLibEx(com::OwnModulePath().c_str(), REGKIND_NONE, &gLibrary))) {
    gLibrary = nullptr;
    return info;
  }
  gLibrary->GetTypeInfoOfGuid(interfaceId, info.Receive());
  return info;
}

}  // namespace ado_dll
