// The system's ODBC headers, and texts between UTF-16 and the driver's wide characters, which are
// two bytes each on both systems.
#pragma once

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
// The plain names mean the narrow calls on both systems.
#define SQL_NOUNICODEMAP
#include <windows.h>
#endif

#include <cstddef>
#include <sql.h>
#include <sqlext.h>
#include <string>
#include <string_view>
#include <vector>

namespace odbc {

// A copy with the terminating zero, which many calls require even though they take a length.
inline std::vector<SQLWCHAR> ToWide(std::u16string_view text) {
  std::vector<SQLWCHAR> wide(text.begin(), text.end());
  wide.push_back(0);
  return wide;
}

inline std::u16string FromWide(const SQLWCHAR* wide, std::size_t length) {
  return {wide, wide + length};
}

// Numbers that ODBC takes in place of a pointer.
inline SQLPOINTER AsPointer(std::size_t number) {
  return reinterpret_cast<SQLPOINTER>(number);  // NOLINT(performance-no-int-to-ptr)
}

}  // namespace odbc
