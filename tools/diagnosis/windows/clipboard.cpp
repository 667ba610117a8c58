#include "diagnosis/windows/clipboard.h"

#include <algorithm>

namespace diagnosis {
namespace {

HGLOBAL InGlobalMemory(const std::u16string& text) {
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(char16_t));
  if (memory != nullptr) {
    auto* const units = static_cast<char16_t*>(GlobalLock(memory));
    std::copy_n(text.c_str(), text.size() + 1, units);
    GlobalUnlock(memory);
  }
  return memory;
}

}  // namespace

bool CopyToClipboard(HWND owner, const std::u16string& text) {
  if (OpenClipboard(owner) == FALSE) {
    return false;
  }
  EmptyClipboard();
  HGLOBAL memory = InGlobalMemory(text);
  const bool done = memory != nullptr && SetClipboardData(CF_UNICODETEXT, memory) != nullptr;
  if (!done) {
    GlobalFree(memory);  // otherwise the system owns it
  }
  CloseClipboard();
  return done;
}

}  // namespace diagnosis
