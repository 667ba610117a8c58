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

struct ErrorNumber {
  DWORD code;
  std::int32_t number;
};

// The runtime's numbers for the system's codes; any other code is 75 "Path/File access error".
constexpr std::array kErrorNumbers = {
    ErrorNumber{ERROR_FILE_NOT_FOUND, 53},
    ErrorNumber{ERROR_PATH_NOT_FOUND, 76},
    ErrorNumber{ERROR_BAD_PATHNAME, 76},
    ErrorNumber{ERROR_BAD_NETPATH, 76},
    ErrorNumber{ERROR_BAD_NET_NAME, 76},
    ErrorNumber{ERROR_INVALID_DRIVE, 68},
    ErrorNumber{ERROR_NOT_READY, 68},
    ErrorNumber{ERROR_DEV_NOT_EXIST, 68},
    ErrorNumber{ERROR_ACCESS_DENIED, 70},
    ErrorNumber{ERROR_WRITE_PROTECT, 70},
    ErrorNumber{ERROR_SHARING_VIOLATION, 70},
    ErrorNumber{ERROR_LOCK_VIOLATION, 70},
    ErrorNumber{ERROR_FILE_EXISTS, 58},
    ErrorNumber{ERROR_ALREADY_EXISTS, 58},
    ErrorNumber{ERROR_INVALID_NAME, 52},
    ErrorNumber{ERROR_FILENAME_EXCED_RANGE, 52},
    ErrorNumber{ERROR_DISK_FULL, 61},
    ErrorNumber{ERROR_HANDLE_DISK_FULL, 61},
    ErrorNumber{ERROR_CRC, 57},
    ErrorNumber{ERROR_IO_DEVICE, 57},
    ErrorNumber{ERROR_NOT_ENOUGH_MEMORY, 7},
    ErrorNumber{ERROR_OUTOFMEMORY, 7},
};

[[noreturn]] void Raise(std::int32_t number) {
  throw AutomationError(number, u"", automation::RuntimeErrorText(number));
}

[[noreturn]] void RaiseLastError() {
  const DWORD code = GetLastError();
  const auto found = std::find_if(kErrorNumbers.begin(), kErrorNumbers.end(),
                                  [&](const auto& entry) { return entry.code == code; });
  Raise(found == kErrorNumbers.end() ? static_cast<std::int32_t>(RuntimeError::PathFileAccess)
                                     : found->number);
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
