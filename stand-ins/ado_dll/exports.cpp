// What the system calls by name.
#include <algorithm>

#include "ado_dll/automation_object.h"
#include "ado_dll/class_factory.h"
#include "ado_dll/class_table.h"
#include "ado_dll/method.h"
#include "ado_dll/module.h"
#include "ado_dll/registration.h"
#include "ado_dll/wine.h"
#include "com/own_module.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  if (!ado_dll::RunsInWine()) {
    return CLASS_E_CLASSNOTAVAILABLE;
  }
  const auto& classes = ado_dll::Classes();
  const auto* const found =
      std::find_if(classes.begin(), classes.end(),
                   [&](const ado_dll::ComClass& entry) { return entry.id == classId; });
  if (found == classes.end()) {
    return CLASS_E_CLASSNOTAVAILABLE;
  }
  HRESULT result = S_OK;
  const HRESULT made = ado_dll::Method([&] {
    result = ado_dll::Make<ado_dll::ClassFactory>(*found)->QueryInterface(interfaceId, object);
  });
  return FAILED(made) ? made : result;
}

STDAPI DllCanUnloadNow() {
  return ado_dll::IsModuleUsed() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  if (!ado_dll::RunsInWine()) {
    return HRESULT_FROM_WIN32(ERROR_NOT_SUPPORTED);
  }
  HRESULT result = S_OK;
  const HRESULT done = ado_dll::Method([&] {
    com::MachineClasses classes;
    result = com::Register(ado_dll::Registration(com::OwnModulePath()), classes);
  });
  return FAILED(done) ? done : result;
}

// On a real Windows, too: whatever led to this file there has to be taken out.
STDAPI DllUnregisterServer() {
  HRESULT result = S_OK;
  const HRESULT done = ado_dll::Method([&] {
    com::MachineClasses classes;
    const std::wstring path = com::OwnModulePath();
    result = com::Unregister(ado_dll::Registration(path), path, classes);
  });
  return FAILED(done) ? done : result;
}
