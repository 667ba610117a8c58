// Text between the core (UTF-8) and the system's calls (wchar_t).
#pragma once

#include <string>
#include <string_view>

#include "automation/text.h"
#include "com/wide_text.h"

namespace field_tests {

inline std::string Utf8(std::wstring_view text) {
  return automation::ToUtf8(com::FromWide(text));
}

inline std::wstring WideOf(std::string_view text) {
  return com::Wide(automation::FromUtf8(text));
}

}  // namespace field_tests
