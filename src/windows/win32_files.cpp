#include "windows/win32_files.h"

#include <algorithm>
#include <array>

#include "automation/automation_error.h"
#include "com/wide_text.h"
#include "com/win32.h"
#include "platform/unfinished_request.h"

namespace windows {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

struct SystemCode {
  DWORD code;
  RuntimeError error;
};

// The runtime's errors for the system's codes; any other code is 75 "Path/File access error".
constexpr std::array kSystemCodes = {
    SystemCode{ERROR_FILE_NOT_FOUND, RuntimeError::FileNotFound},
    SystemCode{ERROR_PATH_NOT_FOUND, RuntimeError::PathNotFound},
    SystemCode{ERROR_BAD_PATHNAME, RuntimeError::PathNotFound},
    SystemCode{ERROR_BAD_NETPATH, RuntimeError::PathNotFound},
    SystemCode{ERROR_BAD_NET_NAME, RuntimeError::PathNotFound},
    SystemCode{ERROR_INVALID_DRIVE, RuntimeError::DeviceUnavailable},
    SystemCode{ERROR_NOT_READY, RuntimeError::DeviceUnavailable},
    SystemCode{ERROR_DEV_NOT_EXIST, RuntimeError::DeviceUnavailable},
    SystemCode{ERROR_ACCESS_DENIED, RuntimeError::PermissionDenied},
    SystemCode{ERROR_WRITE_PROTECT, RuntimeError::PermissionDenied},
    SystemCode{ERROR_SHARING_VIOLATION, RuntimeError::PermissionDenied},
    SystemCode{ERROR_LOCK_VIOLATION, RuntimeError::PermissionDenied},
    SystemCode{ERROR_FILE_EXISTS, RuntimeError::FileAlreadyExists},
    SystemCode{ERROR_ALREADY_EXISTS, RuntimeError::FileAlreadyExists},
    SystemCode{ERROR_INVALID_NAME, RuntimeError::BadFileName},
    SystemCode{ERROR_FILENAME_EXCED_RANGE, RuntimeError::BadFileName},
    SystemCode{ERROR_DISK_FULL, RuntimeError::DiskFull},
    SystemCode{ERROR_HANDLE_DISK_FULL, RuntimeError::DiskFull},
    SystemCode{ERROR_CRC, RuntimeError::DeviceIoError},
    SystemCode{ERROR_IO_DEVICE, RuntimeError::DeviceIoError},
    SystemCode{ERROR_NOT_ENOUGH_MEMORY, RuntimeError::OutOfMemory},
    SystemCode{ERROR_OUTOFMEMORY, RuntimeError::OutOfMemory},
};

[[noreturn]] void RaiseLastError() {
  const DWORD code = GetLastError();
  const auto found = std::find_if(kSystemCodes.begin(), kSystemCodes.end(),
                                  [&](const auto& entry) { return entry.code == code; });
  throw AutomationError(found == kSystemCodes.end() ? RuntimeError::PathFileAccess : found->error);
}

// For calls on an existing file: if its folder is missing, the file is missing.
[[noreturn]] void RaiseLastErrorOfFile() {
  if (GetLastError() == ERROR_PATH_NOT_FOUND) {
    throw AutomationError(RuntimeError::FileNotFound);
  }
  RaiseLastError();
}

std::int64_t Joined(DWORD high, DWORD low) {
  return (static_cast<std::int64_t>(high) << 32) | low;
}

// A file being written, which nobody else can open until it is renamed into place. Otherwise the
// destructor deletes it through the same handle, which no other program can prevent.
class TemporaryFile {
 public:
  TemporaryFile(FileCalls& calls, const std::wstring& path)
      : calls_(calls),
        file_(OpenPatiently(calls, path, GENERIC_WRITE | DELETE, 0, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL | FILE_FLAG_WRITE_THROUGH)) {
    if (file_.get() == INVALID_HANDLE_VALUE) {
      RaiseLastError();
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    FILE_DISPOSITION_INFO disposition{static_cast<BOOLEAN>(!renamed_)};
    SetFileInformationByHandle(file_.get(), FileDispositionInfo, &disposition, sizeof disposition);
  }

  void Write(std::string_view bytes) {
    // WriteFile takes a 32-bit length.
    constexpr std::size_t kLongestWrite = std::size_t{1} << 30;
    while (!bytes.empty()) {
      DWORD written = 0;
      const auto length = static_cast<DWORD>(std::min(bytes.size(), kLongestWrite));
      if (WriteFile(file_.get(), bytes.data(), length, &written, nullptr) == FALSE) {
        RaiseLastError();
      }
      bytes.remove_prefix(written);
    }
    if (!calls_.Flush(file_.get())) {
      RaiseLastError();
    }
  }

  void Rename(const std::wstring& target) {
    if (!Patiently(calls_, target, [&] { return calls_.Rename(file_.get(), target); })) {
      RaiseLastError();
    }
    renamed_ = true;
  }

 private:
  FileCalls& calls_;
  FileHandle file_;
  bool renamed_ = false;
};

// Deletes what a killed host has left in `folder` (which ends with a separator). A file that
// another host is writing right now is locked, so it stays.
void RemoveUnfinishedRequests(FileCalls& calls, const std::wstring& folder) {
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW((folder + L"*.xml.tmp").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    return;
  }
  do {
    if (platform::IsUnfinishedRequest(com::FromWide(found.cFileName))) {
      calls.Delete(folder + found.cFileName);
    }
  } while (FindNextFileW(search, &found) != FALSE);
  FindClose(search);
}

}  // namespace

bool Win32Files::FolderExists(const std::u16string& path) {
  const DWORD attributes = GetFileAttributesW(com::Wide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void Win32Files::CreateFolder(const std::u16string& path) {
  if (CreateDirectoryW(com::Wide(path).c_str(), nullptr) == FALSE) {
    RaiseLastError();
  }
}

std::int64_t Win32Files::FileLength(const std::u16string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (GetFileAttributesExW(com::Wide(path).c_str(), GetFileExInfoStandard, &data) == FALSE) {
    RaiseLastErrorOfFile();
  }
  const bool folder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return folder ? 0 : Joined(data.nFileSizeHigh, data.nFileSizeLow);
}

platform::FileStamp Win32Files::StampOf(const std::u16string& path) noexcept {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  try {
    if (GetFileAttributesExW(com::Wide(path).c_str(), GetFileExInfoStandard, &data) == FALSE) {
      return {};
    }
  } catch (...) {
    return {};
  }
  return {Joined(data.nFileSizeHigh, data.nFileSizeLow),
          Joined(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime)};
}

void Win32Files::DeleteFile(const std::u16string& path) {
  const std::wstring file = com::Wide(path);
  if (!Patiently(calls_, file, [&] { return calls_.Delete(file); })) {
    RaiseLastErrorOfFile();
  }
}

void Win32Files::RenameFile(const std::u16string& path, const std::u16string& newPath) {
  const std::wstring file = com::Wide(path);
  if (!Patiently(calls_, file,
                 [&] { return calls_.Move(file, com::Wide(newPath), MOVEFILE_WRITE_THROUGH); })) {
    RaiseLastErrorOfFile();
  }
}

void Win32Files::ReplaceContents(const std::u16string& path, std::string_view bytes) {
  const std::wstring target = com::Wide(path);
  {
    TemporaryFile file(calls_, target + com::Wide(platform::kTemporaryEnding));
    file.Write(bytes);
    file.Rename(target);
  }
  RemoveUnfinishedRequests(calls_, target.substr(0, target.find_last_of(L"\\/") + 1));
}

}  // namespace windows
