// The four entries that the system calls; Vilnor.def exports them.
#include <algorithm>

#include "com/class_factory.h"
#include "com/failure.h"
#include "com/registration.h"
#include "windows/own_module.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  return com::Guarded(IID_IClassFactory, [&] {
    const auto& classes = com::Classes();
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const auto& entry) { return entry.id == classId; });
    return found == classes.end()
               ? CLASS_E_CLASSNOTAVAILABLE
               : com::MakeObject<com::ClassFactory>(*found)->QueryInterface(interfaceId, object);
  });
}

STDAPI DllCanUnloadNow() {
  return com::ModuleInUse() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return com::Guarded(IID_IUnknown, [] {
    windows::MachineClasses classes;
    return windows::Register(com::Registration(windows::OwnModulePath()), classes);
  });
}

STDAPI DllUnregisterServer() {
  return com::Guarded(IID_IUnknown, [] {
    windows::MachineClasses classes;
    const std::wstring path = windows::OwnModulePath();
    return windows::Unregister(com::Registration(path), path, classes);
  });
}
