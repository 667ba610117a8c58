#include "com/class_factory.h"

#include "com/failure.h"
#include "com/own_module.h"

namespace com {

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID interfaceId, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  if (outer != nullptr) {
    return CLASS_E_NOAGGREGATION;
  }
  StayLoaded();
  return Guarded({IID_IClassFactory, source_},
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
