#include "windows/win32_files.h"

#include <algorithm>
#include <array>

#include "automation/automation_error.h"
#include "windows/wide_text.h"
#include "windows/win32.h"

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

// For calls that look for a file: it is missing just as well when its folder is.
[[noreturn]] void RaiseLastErrorOfFile() {
  if (GetLastError() == ERROR_PATH_NOT_FOUND) {
    throw AutomationError(RuntimeError::FileNotFound);
  }
  RaiseLastError();
}

// A file being written; removed unless it was moved to its place.
class TemporaryFile {
 public:
  explicit TemporaryFile(std::wstring path)
      : path_(std::move(path)),
        handle_(CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr)) {
    if (handle_ == INVALID_HANDLE_VALUE) {
      RaiseLastError();
    }
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    Close();
    if (!moved_) {
      DeleteFileW(path_.c_str());
    }
  }

  void Write(std::string_view bytes) {
    // The system's call takes a length of 32 bits.
    constexpr std::size_t kLongestWrite = std::size_t{1} << 30;
    while (!bytes.empty()) {
      DWORD written = 0;
      const auto length = static_cast<DWORD>(std::min(bytes.size(), kLongestWrite));
      if (WriteFile(handle_, bytes.data(), length, &written, nullptr) == FALSE) {
        RaiseLastError();
      }
      bytes.remove_prefix(written);
    }
    if (FlushFileBuffers(handle_) == FALSE) {
      RaiseLastError();
    }
  }

  void MoveTo(const std::wstring& target) {
    Close();
    if (MoveFileExW(path_.c_str(), target.c_str(),
                    MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) == FALSE) {
      RaiseLastError();
    }
    moved_ = true;
  }

 private:
  void Close() {
    if (handle_ != INVALID_HANDLE_VALUE) {
      CloseHandle(handle_);
      handle_ = INVALID_HANDLE_VALUE;
    }
  }

  std::wstring path_;
  HANDLE handle_;
  bool moved_ = false;
};

}  // namespace

bool Win32Files::FolderExists(const std::u16string& path) {
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

void Win32Files::CreateFolder(const std::u16string& path) {
  if (CreateDirectoryW(Wide(path).c_str(), nullptr) == FALSE) {
    RaiseLastError();
  }
}

std::int64_t Win32Files::FileLength(const std::u16string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (GetFileAttributesExW(Wide(path).c_str(), GetFileExInfoStandard, &data) == FALSE) {
    RaiseLastErrorOfFile();
  }
  const bool folder = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return folder ? 0 : (static_cast<std::int64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

void Win32Files::DeleteFile(const std::u16string& path) {
  if (DeleteFileW(Wide(path).c_str()) == FALSE) {
    RaiseLastErrorOfFile();
  }
}

void Win32Files::ReplaceContents(const std::u16string& path, std::string_view bytes) {
  TemporaryFile file(Wide(path) + L".tmp");
  file.Write(bytes);
  file.MoveTo(Wide(path));
}

}  // namespace windows
