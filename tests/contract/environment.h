// Settings of a test run, from the environment.
#pragma once

#include <cstdlib>
#include <string>

#include "automation/text.h"

namespace contract {

// "" for a missing variable. The name is ASCII.
inline std::u16string Setting(const std::string& variable) {
#ifdef _WIN32
  const wchar_t* const value = _wgetenv(std::wstring(variable.begin(), variable.end()).c_str());
  const std::wstring text = value == nullptr ? L"" : value;
  return {text.begin(), text.end()};
#else
  const char* const value = std::getenv(variable.c_str());
  return value == nullptr ? std::u16string() : automation::FromUtf8(value);
#endif
}

// The one database of a field run: its connection string, "" in any other run, and its product.
inline std::u16string GivenDatabase() {
  return Setting("VILNOR_TEST_DATABASE");
}
inline std::string GivenProduct() {
  return automation::ToUtf8(Setting("VILNOR_TEST_PRODUCT"));
}

}  // namespace contract
