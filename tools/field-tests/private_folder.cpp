#include "field-tests/private_folder.h"

#include <array>
#include <memory>

#include "field-tests/cannot_work.h"
#include "field-tests/handle.h"
#include "field-tests/wide.h"
// Need win32.h in front of them.
#include <aclapi.h>
#include <sddl.h>

namespace field_tests {
namespace {

constexpr ACCESS_MASK kWriting = FILE_WRITE_DATA | FILE_APPEND_DATA | FILE_WRITE_EA |
                                 FILE_DELETE_CHILD | FILE_WRITE_ATTRIBUTES | DELETE | WRITE_DAC |
                                 WRITE_OWNER | GENERIC_WRITE | GENERIC_ALL;

struct FreeLocal {
  void operator()(void* memory) const { LocalFree(memory); }
};
using Descriptor = std::unique_ptr<void, FreeLocal>;

Descriptor DescriptorOf(const std::wstring& text) {
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ConvertStringSecurityDescriptorToSecurityDescriptorW(text.c_str(), SDDL_REVISION_1, &descriptor,
                                                       nullptr);
  return Descriptor(descriptor);
}

bool IsTrusted(PSID user) {
  PSID thisUser = nullptr;
  ConvertStringSidToSidW(ThisUser().c_str(), &thisUser);
  const std::unique_ptr<void, FreeLocal> owned(thisUser);
  return (thisUser != nullptr && EqualSid(user, thisUser) != FALSE) ||
         IsWellKnownSid(user, WinBuiltinAdministratorsSid) != FALSE ||
         IsWellKnownSid(user, WinLocalSystemSid) != FALSE;
}

bool OnlyTrustedWrite(const ACL& list) {
  for (DWORD index = 0; index < list.AceCount; ++index) {
    void* entry = nullptr;
    if (GetAce(const_cast<ACL*>(&list), index, &entry) == FALSE) {
      return false;
    }
    auto& allowed = *static_cast<ACCESS_ALLOWED_ACE*>(entry);
    const auto type = allowed.Header.AceType;
    const bool isHarmless = type == ACCESS_DENIED_ACE_TYPE ||
                            (type == ACCESS_ALLOWED_ACE_TYPE &&
                             ((allowed.Mask & kWriting) == 0 || IsTrusted(&allowed.SidStart)));
    if (!isHarmless) {
      return false;
    }
  }
  return true;
}

bool IsPrivate(const std::filesystem::path& path) {
  const Handle folder = Owned(
      CreateFileW(path.c_str(), READ_CONTROL | FILE_READ_ATTRIBUTES,
                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                  FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  BY_HANDLE_FILE_INFORMATION found{};
  if (!folder || GetFileInformationByHandle(folder.get(), &found) == FALSE ||
      (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 ||
      (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
    return false;
  }
  PSID owner = nullptr;
  PACL list = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const DWORD status = GetSecurityInfo(folder.get(), SE_FILE_OBJECT,
                                       OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION,
                                       &owner, nullptr, &list, nullptr, &descriptor);
  const Descriptor owned(descriptor);
  return status == ERROR_SUCCESS && owner != nullptr && IsTrusted(owner) && list != nullptr &&
         OnlyTrustedWrite(*list);
}

}  // namespace

bool MakePrivateFolder(const std::filesystem::path& path) {
  const auto descriptor =
      DescriptorOf(L"D:P(A;OICI;FA;;;SY)(A;OICI;FA;;;BA)(A;OICI;FA;;;" + ThisUser() + L")");
  SECURITY_ATTRIBUTES rights = {
      .nLength = sizeof rights, .lpSecurityDescriptor = descriptor.get(), .bInheritHandle = FALSE};
  if (descriptor && CreateDirectoryW(path.c_str(), &rights) != FALSE) {
    return true;
  }
  if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) {
    return false;
  }
  if (!IsPrivate(path)) {
    throw CannotWork("The folder " + Utf8(path.wstring()) +
                     " is not this user's alone: the field tests of another user made it, or "
                     "somebody who meant harm. Nothing was changed. If no other user's run was "
                     "ended, an administrator can delete it.");
  }
  return true;
}

std::wstring ThisUser() {
  HANDLE opened = nullptr;
  OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened);
  const Handle token(opened);
  alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
  DWORD size = 0;
  wchar_t* text = nullptr;
  if (GetTokenInformation(token.get(), TokenUser, user.data(), user.size(), &size) == FALSE ||
      ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text) ==
          FALSE) {
    throw CannotWork("Windows does not tell which user this is.");
  }
  const std::unique_ptr<wchar_t, FreeLocal> owned(text);
  return text;
}

}  // namespace field_tests
