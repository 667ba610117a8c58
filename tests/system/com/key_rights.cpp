#include "system/com/key_rights.h"

#include <gtest/gtest.h>
// Needs win32.h in front of it.
#include <sddl.h>

namespace system_tests {

KeyRights::KeyRights(HKEY root, const std::wstring& path, const wchar_t* accessList) {
  EXPECT_EQ(RegOpenKeyExW(root, path.c_str(), 0, READ_CONTROL | WRITE_DAC, &key_), ERROR_SUCCESS);
  DWORD size = 0;
  RegGetKeySecurity(key_, DACL_SECURITY_INFORMATION, nullptr, &size);
  before_.resize(size);
  EXPECT_EQ(RegGetKeySecurity(key_, DACL_SECURITY_INFORMATION, before_.data(), &size),
            ERROR_SUCCESS);
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  EXPECT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(accessList, SDDL_REVISION_1,
                                                                   &descriptor, nullptr));
  EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
  LocalFree(descriptor);
}

KeyRights::~KeyRights() {
  EXPECT_EQ(RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, before_.data()), ERROR_SUCCESS);
  RegCloseKey(key_);
}

}  // namespace system_tests
