// An in-process server: what it says of itself, and what its exports do with that.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "com/com_object.h"
#include "com/server_registration.h"

namespace com {

// A class that the server offers.
struct ClassEntry {
  CLSID id;
  // For people who look into the registry.
  const wchar_t* name;
  const wchar_t* programId;
  // The program identifier that always means the newest version; nullptr when there is none beside
  // `programId`.
  const wchar_t* newestProgramId;
  // A new object. Throws what its creation fails with.
  ComPtr<IUnknown> (*create)();
};

// For ClassEntry::create.
template <class Object>
ComPtr<IUnknown> Create() {
  typename Object::Identity* const identity = MakeObject<Object>().Detach();
  return ComPtr<IUnknown>::Attach(identity);
}

struct Server {
  // The source of errors that name none themselves.
  const wchar_t* source;
  std::span<const ClassEntry> classes;
  // What is entered into the registry for a file at that path.
  std::vector<RegisteredPart> (*registration)(const std::wstring& modulePath);
};

// What DllGetClassObject, DllRegisterServer and DllUnregisterServer return.
HRESULT GetClassObject(const Server& server, REFCLSID classId, REFIID interfaceId, void** object);
HRESULT RegisterServer(const Server& server);
HRESULT UnregisterServer(const Server& server);

// The registry's entries of a class, the path of its file among them.
RegisteredPart ClassPart(const ClassEntry& entry, const std::wstring& modulePath);
// CLSID\{...}, below which they are.
std::wstring ClassKey(const ClassEntry& entry);

}  // namespace com
