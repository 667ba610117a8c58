// The classes that the DLL gives out, under ADO's own identifiers.
#pragma once

#include <array>

#include "com/win32.h"

namespace ado_dll {

struct ComClass {
  CLSID id;
  const wchar_t* name;
  // Of this version, and the one that always means the newest.
  const wchar_t* programId;
  const wchar_t* versionIndependentProgramId;
  // A new object by the interface asked for.
  HRESULT (*create)(REFIID interfaceId, void** object);
};

const std::array<ComClass, 2>& Classes();

}  // namespace ado_dll
