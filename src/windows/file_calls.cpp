#include "windows/file_calls.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace windows {
namespace {

// In milliseconds.
constexpr DWORD kFirstWait = 1;
constexpr DWORD kLongestWait = 64;
constexpr DWORD kPatience = 1'000;

// Whether the same call may succeed in a moment. "Access denied" is permanent for a missing file, a
// folder, and a read-only file.
bool MayPass(DWORD error, const std::wstring& path) {
  if (error != ERROR_ACCESS_DENIED) {
    return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
  }
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) {
    // As with a file that is deleted as soon as its last reader closes it.
    return GetLastError() == ERROR_ACCESS_DENIED;
  }
  return (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) == 0;
}

std::wstring FullPath(const std::wstring& path) {
  std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(
      GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

}  // namespace

HANDLE FileCalls::Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition,
                       DWORD flags) {
  return CreateFileW(path.c_str(), access, sharing, nullptr, disposition, flags, nullptr);
}

bool FileCalls::Flush(HANDLE file) {
  return FlushFileBuffers(file) != FALSE;
}

bool FileCalls::Rename(HANDLE file, const std::wstring& newPath) {
  const std::wstring name = FullPath(newPath);
  const std::size_t length = name.size() * sizeof(wchar_t);
  std::vector<std::byte> memory(sizeof(FILE_RENAME_INFO) + length);
  auto* const information = reinterpret_cast<FILE_RENAME_INFO*>(memory.data());
  information->ReplaceIfExists = TRUE;
  information->FileNameLength = static_cast<DWORD>(length);
  std::copy(name.begin(), name.end(), information->FileName);
  return SetFileInformationByHandle(file, FileRenameInfo, information,
                                    static_cast<DWORD>(memory.size())) != FALSE;
}

bool FileCalls::Move(const std::wstring& path, const std::wstring& newPath, DWORD flags) {
  return MoveFileExW(path.c_str(), newPath.c_str(), flags) != FALSE;
}

bool FileCalls::Delete(const std::wstring& path) {
  return DeleteFileW(path.c_str()) != FALSE;
}

void FileCalls::Wait(DWORD milliseconds) {
  Sleep(milliseconds);
}

FileCalls& SystemFileCalls() {
  static FileCalls calls;
  return calls;
}

bool Patiently(FileCalls& calls, const std::wstring& path, const std::function<bool()>& call) {
  DWORD wait = kFirstWait;
  for (DWORD waited = 0;; waited += wait, wait = std::min(2 * wait, kLongestWait)) {
    if (call()) {
      return true;
    }
    const DWORD error = GetLastError();
    if (waited >= kPatience || !MayPass(error, path)) {
      SetLastError(error);
      return false;
    }
    calls.Wait(wait);
  }
}

HANDLE OpenPatiently(FileCalls& calls, const std::wstring& path, DWORD access, DWORD sharing,
                     DWORD disposition, DWORD flags) {
  HANDLE handle = INVALID_HANDLE_VALUE;
  Patiently(calls, path, [&] {
    handle = calls.Open(path, access, sharing, disposition, flags);
    return handle != INVALID_HANDLE_VALUE;
  });
  return handle;
}

FileHandle::~FileHandle() {
  if (handle_ != INVALID_HANDLE_VALUE) {
    CloseHandle(handle_);
  }
}

}  // namespace windows
