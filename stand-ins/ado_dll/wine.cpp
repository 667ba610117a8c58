#include "ado_dll/wine.h"

#include "com/win32.h"

namespace ado_dll {

bool RunsInWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace ado_dll
