#include "native/local_files.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <system_error>
#include <vector>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "native/paths.h"
#include "platform/unfinished_request.h"

namespace native {
namespace {

namespace fs = std::filesystem;
using automation::AutomationError;
using automation::RuntimeError;

[[noreturn]] void Raise(const std::error_code& error, RuntimeError missing) {
  const auto is = [&](std::errc code) { return error == code; };
  if (is(std::errc::no_such_file_or_directory)) {
    throw AutomationError(missing);
  }
  if (is(std::errc::not_a_directory)) {
    throw AutomationError(RuntimeError::PathNotFound);
  }
  if (is(std::errc::file_exists)) {
    throw AutomationError(RuntimeError::FileAlreadyExists);
  }
  if (is(std::errc::permission_denied) || is(std::errc::operation_not_permitted) ||
      is(std::errc::read_only_file_system)) {
    throw AutomationError(RuntimeError::PermissionDenied);
  }
  if (is(std::errc::no_space_on_device)) {
    throw AutomationError(RuntimeError::DiskFull);
  }
  if (is(std::errc::filename_too_long)) {
    throw AutomationError(RuntimeError::BadFileName);
  }
  throw AutomationError(RuntimeError::PathFileAccess);
}

void Check(const std::error_code& error, RuntimeError missing) {
  if (error) {
    Raise(error, missing);
  }
}

// Removes the file, unless it has been renamed into place.
class TemporaryFile {
 public:
  explicit TemporaryFile(fs::path path) : path_(std::move(path)) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    std::error_code ignored;
    fs::remove(path_, ignored);
  }
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

// Removes what a killed process has left in the folder.
void RemoveUnfinishedRequests(const fs::path& folder) {
  std::error_code ignored;
  std::vector<fs::path> unfinished;
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    if (platform::IsUnfinishedRequest(entry.path().filename().u16string())) {
      unfinished.push_back(entry.path());
    }
  }
  for (const auto& file : unfinished) {
    fs::remove(file, ignored);
  }
}

}  // namespace

bool LocalFiles::FolderExists(const std::u16string& path) {
  std::error_code ignored;
  return fs::is_directory(NativePath(path), ignored);
}

void LocalFiles::CreateFolder(const std::u16string& path) {
  std::error_code error;
  if (!fs::create_directory(NativePath(path), error) && !error) {
    error = std::make_error_code(std::errc::file_exists);
  }
  Check(error, RuntimeError::PathNotFound);
}

std::int64_t LocalFiles::FileLength(const std::u16string& path) {
  std::error_code error;
  const auto length = fs::file_size(NativePath(path), error);
  if (error == std::errc::is_a_directory) {
    return 0;
  }
  Check(error, RuntimeError::FileNotFound);
  return static_cast<std::int64_t>(length);
}

platform::FileStamp LocalFiles::StampOf(const std::u16string& path) noexcept {
  try {
    const fs::path file = NativePath(path);
    return {static_cast<std::int64_t>(fs::file_size(file)),
            static_cast<std::int64_t>(fs::last_write_time(file).time_since_epoch().count())};
  } catch (...) {
    return {};
  }
}

void LocalFiles::DeleteFile(const std::u16string& path) {
  std::error_code error;
  if (!fs::remove(NativePath(path), error) && !error) {
    error = std::make_error_code(std::errc::no_such_file_or_directory);
  }
  Check(error, RuntimeError::FileNotFound);
}

void LocalFiles::RenameFile(const std::u16string& path, const std::u16string& newPath) {
  if (::renameat2(AT_FDCWD, NativePath(path).c_str(), AT_FDCWD, NativePath(newPath).c_str(),
                  RENAME_NOREPLACE) != 0) {
    Raise(std::error_code(errno, std::generic_category()), RuntimeError::FileNotFound);
  }
}

void LocalFiles::ReplaceContents(const std::u16string& path, std::string_view bytes) {
  const fs::path target = NativePath(path);
  const TemporaryFile temporary(target.string() + automation::ToUtf8(platform::kTemporaryEnding));
  std::error_code error;
  if (!fs::is_directory(target.parent_path(), error)) {
    Check(error, RuntimeError::PathNotFound);
    throw AutomationError(RuntimeError::PathNotFound);
  }
  errno = 0;
  std::ofstream file(temporary.path(), std::ios::binary | std::ios::trunc);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
  if (!file) {
    Raise(std::error_code(errno, std::generic_category()), RuntimeError::PathNotFound);
  }
  fs::rename(temporary.path(), target, error);
  Check(error, RuntimeError::PathNotFound);
  RemoveUnfinishedRequests(target.parent_path());
}

}  // namespace native
