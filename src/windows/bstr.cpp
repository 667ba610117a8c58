#include "windows/bstr.h"

#include <new>

#include "windows/wide_text.h"

namespace windows {

std::u16string TextOf(BSTR text) {
  return FromWide({text, SysStringLen(text)});
}

Bstr::Bstr(std::u16string_view text) {
  const std::wstring wide = Wide(text);
  text_ = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  if (text_ == nullptr) {
    throw std::bad_alloc();
  }
}

}  // namespace windows
