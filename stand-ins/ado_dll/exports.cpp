// The four entry points that the system calls; AdoOdbc.def exports them.
#include "ado_dll/classes.h"
#include "ado_dll/registration.h"
#include "ado_dll/wine.h"
#include "com/server.h"

namespace {

com::Server AdoOdbc() {
  return {.source = L"", .classes = ado_dll::Classes(), .registration = ado_dll::Registration};
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  if (object != nullptr && !ado_dll::RunsInWine()) {
    *object = nullptr;
    return CLASS_E_CLASSNOTAVAILABLE;
  }
  return com::GetClassObject(AdoOdbc(), classId, interfaceId, object);
}

STDAPI DllCanUnloadNow() {
  return com::IsModuleLocked() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return ado_dll::RunsInWine() ? com::RegisterServer(AdoOdbc())
                               : HRESULT_FROM_WIN32(ERROR_NOT_SUPPORTED);
}

// Works on real Windows too: registry entries that lead to this file there must be removable.
STDAPI DllUnregisterServer() {
  return com::UnregisterServer(AdoOdbc());
}
