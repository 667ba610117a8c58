// What the system calls by name.
#include <algorithm>

#include "ado-odbc/automation_object.h"
#include "ado-odbc/class_factory.h"
#include "ado-odbc/class_table.h"
#include "ado-odbc/method.h"
#include "ado-odbc/module.h"
#include "ado-odbc/registration.h"
#include "ado-odbc/wine.h"
#include "windows/own_module.h"

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  if (!ado_odbc::RunsInWine()) {
    return CLASS_E_CLASSNOTAVAILABLE;
  }
  const auto& classes = ado_odbc::Classes();
  const auto* const found =
      std::find_if(classes.begin(), classes.end(),
                   [&](const ado_odbc::ComClass& entry) { return entry.id == classId; });
  if (found == classes.end()) {
    return CLASS_E_CLASSNOTAVAILABLE;
  }
  HRESULT result = S_OK;
  const HRESULT made = ado_odbc::Method([&] {
    result = ado_odbc::Make<ado_odbc::ClassFactory>(*found)->QueryInterface(interfaceId, object);
  });
  return FAILED(made) ? made : result;
}

STDAPI DllCanUnloadNow() {
  return ado_odbc::IsModuleUsed() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  if (!ado_odbc::RunsInWine()) {
    return HRESULT_FROM_WIN32(ERROR_NOT_SUPPORTED);
  }
  HRESULT result = S_OK;
  const HRESULT done = ado_odbc::Method([&] {
    windows::MachineClasses classes;
    result = windows::Register(ado_odbc::Registration(windows::OwnModulePath()), classes);
  });
  return FAILED(done) ? done : result;
}

// On a real Windows, too: whatever led to this file there has to be taken out.
STDAPI DllUnregisterServer() {
  HRESULT result = S_OK;
  const HRESULT done = ado_odbc::Method([&] {
    windows::MachineClasses classes;
    const std::wstring path = windows::OwnModulePath();
    result = windows::Unregister(ado_odbc::Registration(path), path, classes);
  });
  return FAILED(done) ? done : result;
}
