#include "diagnosis/windows/program_file.h"

#include <cstddef>
#include <vector>

#include "com/win32.h"
#include "diagnosis/core/trust.h"
// These need win32.h in front of them.
#include <softpub.h>
#include <wintrust.h>

namespace diagnosis {
namespace {

std::u16string VersionOf(const std::wstring& path) {
  DWORD ignored = 0;
  std::vector<std::byte> memory(GetFileVersionInfoSizeW(path.c_str(), &ignored));
  void* found = nullptr;
  UINT length = 0;
  if (memory.empty() ||
      GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(memory.size()), memory.data()) ==
          FALSE ||
      VerQueryValueW(memory.data(), L"\\", &found, &length) == FALSE) {
    return {};
  }
  const auto& version = *static_cast<const VS_FIXEDFILEINFO*>(found);
  std::u16string text;
  for (const DWORD number : {HIWORD(version.dwFileVersionMS), LOWORD(version.dwFileVersionMS),
                             HIWORD(version.dwFileVersionLS), LOWORD(version.dwFileVersionLS)}) {
    const std::string digits = std::to_string(number);
    text += (text.empty() ? u"" : u".") + std::u16string(digits.begin(), digits.end());
  }
  return text;
}

int BitsOf(HANDLE file) {
  IMAGE_DOS_HEADER start{};
  DWORD read = 0;
  if (ReadFile(file, &start, sizeof start, &read, nullptr) == FALSE || read != sizeof start ||
      start.e_magic != IMAGE_DOS_SIGNATURE) {
    return 0;
  }
  SetFilePointer(file, start.e_lfanew, nullptr, FILE_BEGIN);
  struct {
    DWORD signature;
    IMAGE_FILE_HEADER header;
  } image{};
  if (ReadFile(file, &image, sizeof image, &read, nullptr) == FALSE || read != sizeof image ||
      image.signature != IMAGE_NT_SIGNATURE) {
    return 0;
  }
  return image.header.Machine == IMAGE_FILE_MACHINE_I386 ? 32 : 64;
}

// Without a window, and without asking anybody on the network.
Signature VerifiedSignature(const std::wstring& path) {
  WINTRUST_FILE_INFO file{};
  file.cbStruct = sizeof file;
  file.pcwszFilePath = path.c_str();
  WINTRUST_DATA data{};
  data.cbStruct = sizeof data;
  data.dwUIChoice = WTD_UI_NONE;
  data.fdwRevocationChecks = WTD_REVOKE_NONE;
  data.dwUnionChoice = WTD_CHOICE_FILE;
  data.pFile = &file;
  data.dwStateAction = WTD_STATEACTION_VERIFY;
  data.dwProvFlags = WTD_CACHE_ONLY_URL_RETRIEVAL;
  GUID policy = WINTRUST_ACTION_GENERIC_VERIFY_V2;
  HWND nobody = static_cast<HWND>(INVALID_HANDLE_VALUE);
  const LONG status = WinVerifyTrust(nobody, &policy, &data);
  data.dwStateAction = WTD_STATEACTION_CLOSE;
  WinVerifyTrust(nobody, &policy, &data);
  return SignatureOf(status);
}

}  // namespace

ProgramFile ExamineProgramFile(const std::wstring& path) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) {
    return {};
  }
  const int bits = BitsOf(file);
  CloseHandle(file);
  return {.exists = true,
          .bits = bits,
          .version = VersionOf(path),
          .signature = VerifiedSignature(path)};
}

}  // namespace diagnosis
