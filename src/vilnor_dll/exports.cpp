// The four entry points that the system calls; Vilnor.def exports them.
#include "com/server.h"
#include "vilnor_dll/classes.h"
#include "vilnor_dll/interfaces.h"
#include "vilnor_dll/module.h"
#include "vilnor_dll/registration.h"

namespace {

com::Server Vilnor() {
  return {.source = vilnor_dll::kSource,
          .classes = vilnor_dll::Classes(),
          .registration = vilnor_dll::Registration};
}

}  // namespace

STDAPI DllGetClassObject(REFCLSID classId, REFIID interfaceId, void** object) {
  return com::GetClassObject(Vilnor(), classId, interfaceId, object);
}

STDAPI DllCanUnloadNow() {
  return vilnor_dll::ModuleInUse() ? S_FALSE : S_OK;
}

STDAPI DllRegisterServer() {
  return com::RegisterServer(Vilnor());
}

STDAPI DllUnregisterServer() {
  return com::UnregisterServer(Vilnor());
}
