#include "windows/bstr.h"

#include <algorithm>
#include <new>

#include "windows/wide_text.h"

namespace windows {

std::u16string TextOf(BSTR text) {
  return FromWide({text, SysStringLen(text)});
}

Bstr::Bstr(std::u16string_view text) {
  text_ = SysAllocStringLen(nullptr, static_cast<UINT>(text.size()));
  if (text_ == nullptr) {
    throw std::bad_alloc();
  }
  std::copy(text.begin(), text.end(), text_);
}

}  // namespace windows
