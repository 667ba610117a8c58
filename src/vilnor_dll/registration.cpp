#include "vilnor_dll/registration.h"

#include <array>

#include "vilnor_dll/classes.h"
#include "vilnor_dll/interfaces.h"

namespace vilnor_dll {
namespace {

using com::GuidText;
using com::RegisteredPart;

constexpr const wchar_t* kVersion = L"1.5";
// Proxies for calls between apartments. Both use the type library; the second is for a pure
// dispinterface.
constexpr const wchar_t* kDualProxy = L"{00020424-0000-0000-C000-000000000046}";
constexpr const wchar_t* kDispatchProxy = L"{00020420-0000-0000-C000-000000000046}";

struct Interface {
  const IID& id;
  const wchar_t* name;
  const wchar_t* proxy;
};

const std::array<Interface, 3>& Interfaces() {
  static const std::array<Interface, 3> interfaces = {
      Interface{IID__BVilnor, L"_BVilnor", kDualProxy},
      Interface{DIID___BVilnor, L"__BVilnor", kDispatchProxy},
      Interface{IID__DBVilnor, L"_DBVilnor", kDualProxy},
  };
  return interfaces;
}

RegisteredPart Class(const com::ClassEntry& entry, const std::wstring& modulePath) {
  const std::wstring key = com::ClassKey(entry);
  RegisteredPart part = com::ClassPart(entry, modulePath);
  part.Add(key, L"\\TypeLib", L"", GuidText(LIBID_Vilnor));
  part.Add(key, L"\\Version", L"", kVersion);
  return part;
}

void AddInterface(RegisteredPart& library, const Interface& described) {
  const std::wstring key = L"Interface\\" + GuidText(described.id);
  library.Add(key, L"", L"", described.name);
  library.Add(key, L"\\ProxyStubClsid32", L"", described.proxy);
  library.Add(key, L"\\TypeLib", L"", GuidText(LIBID_Vilnor));
  library.Add(key, L"\\TypeLib", L"Version", kVersion);
  library.removed.push_back({key, library.texts.back()});
}

// Does not use the system's RegisterTypeLib, which writes to the merged view of the classes, does
// not report failed writes, and registers the library under its own locale only, where calls
// between users of another language may miss it. Everyone finds it under the neutral locale.
RegisteredPart TypeLibrary(const std::wstring& modulePath) {
  RegisteredPart part;
  part.parent = L"TypeLib\\" + GuidText(LIBID_Vilnor);
  const std::wstring version = part.parent + L"\\" + kVersion;
  part.Add(version, L"", L"", L"Vilnor");
  part.Add(version, L"\\FLAGS", L"", L"0");
  part.Add(version, L"\\HELPDIR", L"", modulePath.substr(0, modulePath.find_last_of(L'\\')));
  for (const wchar_t* locale : {L"\\409\\win32", L"\\0\\win32"}) {
    part.Add(version, locale, L"", modulePath);
    part.fileKeys.push_back(part.texts.back().key);
  }
  for (const Interface& described : Interfaces()) {
    AddInterface(part, described);
  }
  part.removed.push_back({version, {}});
  return part;
}

}  // namespace

std::vector<RegisteredPart> Registration(const std::wstring& modulePath) {
  std::vector<RegisteredPart> parts = {TypeLibrary(modulePath)};
  for (const com::ClassEntry& entry : Classes()) {
    parts.push_back(Class(entry, modulePath));
  }
  return parts;
}

}  // namespace vilnor_dll
