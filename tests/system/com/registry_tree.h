// Registry keys for the tests to compare.
#pragma once

#include <map>
#include <string>

#include "com/win32.h"

namespace system_tests {

// Every value of HKEY_CLASSES_ROOT, or of one key there, by "key|name", as text (empty for other
// types than text), and every key by "key". All 24,000 entries of a fresh system take seconds.
std::map<std::wstring, std::wstring> ClassesTree(const std::wstring& key = {});

// A text value of HKEY_CLASSES_ROOT, "" when it is missing.
std::wstring ClassesText(const std::wstring& key, const std::wstring& name = {});

}  // namespace system_tests
