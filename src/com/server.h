// Describes an in-process server, and implements its exports from the description.
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
  // For people who look at the registry.
  const wchar_t* name;
  const wchar_t* programId;
  // The version-independent program identifier; nullptr when `programId` is the only one.
  const wchar_t* newestProgramId;
  // Returns a new object. Throws when its creation fails.
  ComPtr<IUnknown> (*create)();
};

// For ClassEntry::create.
template <class Object>
ComPtr<IUnknown> Create() {
  typename Object::Identity* const identity = MakeObject<Object>().Detach();
  return ComPtr<IUnknown>::Attach(identity);
}

struct Server {
  // The source of errors that name none.
  const wchar_t* source;
  std::span<const ClassEntry> classes;
  // The registry entries for a file at that path.
  std::vector<RegisteredPart> (*registration)(const std::wstring& modulePath);
};

// The implementations of DllGetClassObject, DllRegisterServer and DllUnregisterServer.
HRESULT GetClassObject(const Server& server, REFCLSID classId, REFIID interfaceId, void** object);
HRESULT RegisterServer(const Server& server);
HRESULT UnregisterServer(const Server& server);

// The registry entries of a class, its file's path included.
RegisteredPart ClassPart(const ClassEntry& entry, const std::wstring& modulePath);
// Their parent key, CLSID\{...}.
std::wstring ClassKey(const ClassEntry& entry);

}  // namespace com
