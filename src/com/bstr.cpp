#include "com/bstr.h"

#include <algorithm>
#include <new>

#include "com/wide_text.h"

namespace com {

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

}  // namespace com
