// Turns a server's exceptions into COM results.
#pragma once

#include <type_traits>

#include "com/win32.h"

namespace com {

// Where an error comes from.
struct Origin {
  const IID& interfaceId;
  // For errors that name no source.
  const wchar_t* source = L"";
};

// The result for the exception in flight: 0x800A0000 + its number for 1 to 65535, a negative number
// unchanged, 0x800A01B8 (440, automation error) for any other. Sets source and description in the
// thread's error information. Call it in a catch block.
HRESULT ReportCurrentError(const Origin& origin) noexcept;

// Runs `body` and returns its result, S_OK if it has none. Lets no exception escape.
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
