#include "ado-odbc/wine.h"

#include "windows/win32.h"

namespace ado_odbc {

bool RunsInWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

}  // namespace ado_odbc
