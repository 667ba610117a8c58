#include "ado-odbc/module.h"

#include <array>
#include <string>

namespace ado_odbc {
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

HMODULE Module() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<const wchar_t*>(&gLock), &module);
  return module;
}

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

windows::ComPtr<ITypeInfo> TypeInfoOf(const IID& interfaceId) {
  const Locked locked;
  windows::ComPtr<ITypeInfo> info;
  if (gLibrary == nullptr && FAILED(LoadTypeLibEx(ModulePath().c_str(), REGKIND_NONE, &gLibrary))) {
    gLibrary = nullptr;
    return info;
  }
  gLibrary->GetTypeInfoOfGuid(interfaceId, info.Receive());
  return info;
}

std::wstring ModulePath() {
  std::array<wchar_t, MAX_PATH> path{};
  const DWORD length = GetModuleFileNameW(Module(), path.data(), static_cast<DWORD>(path.size()));
  return {path.data(), length};
}

}  // namespace ado_odbc
