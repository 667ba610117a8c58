// A user without rights: a registry key whose access list limits everybody.
#pragma once

#include <string>
#include <vector>

#include "com/win32.h"

namespace system_tests {

// Access lists for everybody.
inline constexpr const wchar_t* kReading = L"D:P(A;;KR;;;WD)";
inline constexpr const wchar_t* kReadingAndWriting = L"D:P(A;;KRKW;;;WD)";
// Reading, writing and creating links: everything except deleting and changing the list itself.
inline constexpr const wchar_t* kSixRights = L"D:P(A;;0x2003F;;;WD)";
inline constexpr const wchar_t* kNothing = L"D:P(D;;KA;;;WD)";

// Gives a key this access list, and the former one back when the object ends.
class KeyRights {
 public:
  // The key exists.
  KeyRights(HKEY root, const std::wstring& path, const wchar_t* accessList);
  KeyRights(const KeyRights&) = delete;
  KeyRights& operator=(const KeyRights&) = delete;
  ~KeyRights();

 private:
  HKEY key_ = nullptr;
  // A security descriptor.
  std::vector<BYTE> before_;
};

}  // namespace system_tests
