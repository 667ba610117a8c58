// Text between the component (char16_t) and the wide forms of the system's calls (wchar_t).
#pragma once

#include <string>
#include <string_view>

namespace com {

inline std::wstring Wide(std::u16string_view text) {
  return {text.begin(), text.end()};
}

inline std::u16string FromWide(std::wstring_view text) {
  return {text.begin(), text.end()};
}

}  // namespace com
