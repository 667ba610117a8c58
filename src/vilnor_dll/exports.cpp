// The four entries that the system calls; Vilnor.def exports them.
#include <algorithm>

#include "com/own_module.h"
#include "vilnor_dll/class_factory.h"
#include "vilnor_dll/failure.h"
#include "vilnor_dll/registration.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  return vilnor_dll::Guarded(IID_IClassFactory, [&] {
    const auto& classes = vilnor_dll::Classes();
    const auto found = std::find_if(classes.begin(), classes.end(),
                                    [&](const auto& entry) { return entry.id == classId; });
    return found == classes.end()
               ? CLASS_E_CLASSNOTAVAILABLE
               : vilnor_dll::MakeObject<vilnor_dll::ClassFactory>(*found)->QueryInterface(
                     interfaceId, object);
  });
}

STDAPI DllCanUnloadNow() {
  return vilnor_dll::ModuleInUse() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return vilnor_dll::Guarded(IID_IUnknown, [] {
    com::MachineClasses classes;
    return com::Register(vilnor_dll::Registration(com::OwnModulePath()), classes);
  });
}

STDAPI DllUnregisterServer() {
  return vilnor_dll::Guarded(IID_IUnknown, [] {
    com::MachineClasses classes;
    const std::wstring path = com::OwnModulePath();
    return com::Unregister(vilnor_dll::Registration(path), path, classes);
  });
}
