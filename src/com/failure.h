// The border between a server's exceptions and COM's results.
#pragma once

#include <type_traits>

#include "com/win32.h"

namespace com {

// Where an error comes from.
struct Origin {
  const IID& interfaceId;
  // For an error that names no source itself.
  const wchar_t* source = L"";
};

// The result for the error in flight: 0x800A0000 + its number for 1 to 65535, a negative number as
// it is, 0x800A01B8 (440, automation error) for any other. Origin and description go to the
// thread's error information. To be called in a catch block.
HRESULT ReportCurrentError(const Origin& origin) noexcept;

// Runs `body`, whose result is S_OK or what it returns. No exception passes.
template <class Body>
HRESULT Guarded(const Origin& origin, Body&& body) noexcept {
  try {
    if constexpr (std::is_void_v<std::invoke_result_t<Body>>) {
      body();
      return S_OK;
    } else {
      return body();
    }
  } catch (...) {
    return ReportCurrentError(origin);
  }
}

}  // namespace com
