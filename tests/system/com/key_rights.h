// A user without rights: a registry key whose access list gives nobody more than it says.
#pragma once

#include <string>
#include <vector>

#include "com/win32.h"

namespace system_tests {

// Access lists for everybody.
inline constexpr const wchar_t* kReading = L"D:P(A;;KR;;;WD)";
inline constexpr const wchar_t* kReadingAndWriting = L"D:P(A;;KRKW;;;WD)";
// Reading, writing and creating links: all but deleting and changing the list itself.
inline constexpr const wchar_t* kSixRights = L"D:P(A;;0x2003F;;;WD)";
inline constexpr const wchar_t* kNothing = L"D:P(D;;KA;;;WD)";

// A key with this access list; with its former one again when the object ends.
class KeyRights {
 public:
  // The key is there.
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
