#include "vilnor_dll/class_factory.h"

#include "com/own_module.h"
#include "vilnor_dll/failure.h"

namespace vilnor_dll {

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  if (outer != nullptr) {
    return CLASS_E_NOAGGREGATION;
  }
  com::StayLoaded();
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

}  // namespace vilnor_dll
