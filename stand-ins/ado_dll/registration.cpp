#include "ado_dll/registration.h"

#include "ado_dll/class_table.h"

namespace ado_dll {
namespace {

using com::RegisteredPart;

RegisteredPart PartOf(const ComClass& comClass, const std::wstring& modulePath) {
  const std::wstring id = com::TextOf(comClass.id);
  const std::wstring key = L"CLSID\\" + id;
  const std::wstring current = comClass.programId;
  const std::wstring newest = comClass.versionIndependentProgramId;
  RegisteredPart part;
  part.Add(key, L"", L"", comClass.name);
  part.Add(key, L"\\InprocServer32", L"", modulePath);
  part.fileKeys.push_back(part.texts.back().key);
  part.Add(key, L"\\InprocServer32", L"ThreadingModel", L"Apartment");
  part.Add(key, L"\\ProgID", L"", current);
  part.Add(key, L"\\VersionIndependentProgID", L"", newest);
  for (const std::wstring& programId : {current, newest}) {
    part.Add(programId, L"", L"", comClass.name);
    part.Add(programId, L"\\CLSID", L"", id);
    part.removed.push_back({programId, part.texts.back()});
  }
  part.Add(newest, L"\\CurVer", L"", current);
  part.removed.push_back({key, {}});
  return part;
}

}  // namespace

std::vector<RegisteredPart> Registration(const std::wstring& modulePath) {
  std::vector<RegisteredPart> parts;
  for (const ComClass& comClass : Classes()) {
    parts.push_back(PartOf(comClass, modulePath));
  }
  return parts;
}

}  // namespace ado_dll
