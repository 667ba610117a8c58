#pragma once

#include "platform/files.h"
#include "windows/file_calls.h"

namespace windows {

// Files and folders through Win32. A path whose folder is missing is a missing file (53) if an
// existing file is wanted, and a missing path (76) if something is to be created. Waits about a
// second for a file that another program holds.
class Win32Files : public platform::Files {
 public:
  explicit Win32Files(FileCalls& calls = SystemFileCalls()) : calls_(calls) {}
  bool FolderExists(const std::u16string& path) override;
  void CreateFolder(const std::u16string& path) override;
  std::int64_t FileLength(const std::u16string& path) override;
  platform::FileStamp StampOf(const std::u16string& path) noexcept override;
  void DeleteFile(const std::u16string& path) override;
  void RenameFile(const std::u16string& path, const std::u16string& newPath) override;
  // Writes `path`.tmp, flushes it to disk and renames it, all through one handle without sharing.
  void ReplaceContents(const std::u16string& path, std::string_view bytes) override;

 private:
  FileCalls& calls_;
};

}  // namespace windows
