#include "com/class_factory.h"

#include "com/failure.h"
#include "windows/own_module.h"

namespace com {

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  if (outer != nullptr) {
    return CLASS_E_NOAGGREGATION;
  }
  windows::StayLoaded();
  return Guarded(IID_IClassFactory,
                 [&] { return entry_.create()->QueryInterface(interfaceId, object); });
}

HRESULT ClassFactory::LockServer(BOOL lock) {
  if (lock == FALSE) {
    UnlockModule();
  } else {
    LockModule();
  }
  return S_OK;
}

}  // namespace com
