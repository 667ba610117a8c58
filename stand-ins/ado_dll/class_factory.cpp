#include "ado_dll/class_factory.h"

#include <memory>

#include "ado_dll/method.h"
#include "com/own_module.h"

namespace ado_dll {

HRESULT ClassFactory::QueryInterface(REFIID id, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  const bool known = id == IID_IUnknown || id == IID_IClassFactory;
  *object = known ? this : nullptr;
  if (!known) {
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

ULONG ClassFactory::AddRef() {
  return static_cast<ULONG>(InterlockedIncrement(&references_));
}

ULONG ClassFactory::Release() {
  const LONG left = InterlockedDecrement(&references_);
  if (left == 0) {
    const std::unique_ptr<ClassFactory> last(this);
  }
  return static_cast<ULONG>(left);
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID id, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  if (outer != nullptr) {
    return CLASS_E_NOAGGREGATION;
  }
  com::StayLoaded();
  return class_.create(id, object);
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  LockModule(lock != FALSE);
  return S_OK;
}

}  // namespace ado_dll
