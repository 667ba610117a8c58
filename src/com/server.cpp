#include "com/server.h"

#include <algorithm>

#include "com/class_factory.h"
#include "com/failure.h"
#include "com/own_module.h"

namespace com {
namespace {

void AddProgramId(RegisteredPart& part, const wchar_t* programId, const ClassEntry& entry) {
  part.Add(programId, L"", L"", entry.name);
  part.Add(programId, L"\\CLSID", L"", GuidText(entry.id));
  part.removed.push_back({programId, part.texts.back()});
}

}  // namespace

HRESULT GetClassObject(const Server& server, REFCLSID classId, REFIID interfaceId, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  return Guarded({IID_IClassFactory, server.source}, [&] {
    const auto found = std::find_if(server.classes.begin(), server.classes.end(),
                                    [&](const auto& entry) { return entry.id == classId; });
    return found == server.classes.end() ? CLASS_E_CLASSNOTAVAILABLE
                                         : MakeObject<ClassFactory>(*found, server.source)
                                               ->QueryInterface(interfaceId, object);
  });
}

HRESULT RegisterServer(const Server& server) {
  return Guarded({IID_IUnknown, server.source}, [&] {
    MachineClasses classes;
    return Register(server.registration(OwnModulePath()), classes);
  });
}

HRESULT UnregisterServer(const Server& server) {
  return Guarded({IID_IUnknown, server.source}, [&] {
    MachineClasses classes;
    const std::wstring path = OwnModulePath();
    return Unregister(server.registration(path), path, classes);
  });
}

std::wstring ClassKey(const ClassEntry& entry) {
  return L"CLSID\\" + GuidText(entry.id);
}

RegisteredPart ClassPart(const ClassEntry& entry, const std::wstring& modulePath) {
  const std::wstring key = ClassKey(entry);
  RegisteredPart part;
  AddProgramId(part, entry.programId, entry);
  if (entry.newestProgramId != nullptr) {
    AddProgramId(part, entry.newestProgramId, entry);
    part.Add(entry.newestProgramId, L"\\CurVer", L"", entry.programId);
    part.Add(key, L"\\VersionIndependentProgID", L"", entry.newestProgramId);
  }
  part.Add(key, L"", L"", entry.name);
  part.Add(key, L"\\InprocServer32", L"", modulePath);
  part.fileKeys.push_back(part.texts.back().key);
  part.Add(key, L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  part.Add(key, L"\\ProgID", L"", entry.programId);
  part.removed.push_back({key, {}});
  return part;
}

}  // namespace com
