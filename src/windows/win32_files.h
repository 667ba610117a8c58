#pragma once

#include "platform/files.h"
#include "windows/file_calls.h"

namespace windows {

// Files and folders by the Win32 calls. A path whose folder is missing is a missing file (53) where
// a file is asked for, and a missing path (76) where something is to be made. A file that another
// program holds is waited for, about a second.
class Win32Files : public platform::Files {
 public:
  explicit Win32Files(FileCalls& calls = SystemFileCalls()) : calls_(calls) {}
  bool FolderExists(const std::u16string& path) override;
  void CreateFolder(const std::u16string& path) override;
  std::int64_t FileLength(const std::u16string& path) override;
  platform::FileStamp StampOf(const std::u16string& path) noexcept override;
  void DeleteFile(const std::u16string& path) override;
  void RenameFile(const std::u16string& path, const std::u16string& newPath) override;
  // Written as `path`.tmp, flushed to the disk and renamed, all by one handle that shares nothing.
  void ReplaceContents(const std::u16string& path, std::string_view bytes) override;

 private:
  FileCalls& calls_;
};

}  // namespace windows
