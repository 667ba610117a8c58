#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// Distinguishes a file from one that has replaced it.
struct FileStamp {
  // In bytes; -1 if the file does not exist or cannot be queried.
  std::int64_t length = -1;
  // Time of its last write, in the system's own units.
  std::int64_t written = 0;
  bool Exists() const { return length >= 0; }
  bool operator==(const FileStamp&) const = default;
};

// Files and folders by their full Windows path. Errors are the runtime's: 52 for an invalid name,
// 53 file not found, 57, 61 disk full, 70 permission denied, 75 path/file access, 76 path not
// found.
class Files {
 public:
  virtual ~Files() = default;
  virtual bool FolderExists(const std::u16string& path) = 0;
  // One level; the parent must exist (76). Error 58 "File already exists" if the name is taken.
  virtual void CreateFolder(const std::u16string& path) = 0;
  // Bytes, 0 for a folder; error 53 for a missing file.
  virtual std::int64_t FileLength(const std::u16string& path) = 0;
  virtual FileStamp StampOf(const std::u16string& path) noexcept = 0;
  virtual void DeleteFile(const std::u16string& path) = 0;
  // Renames a file within its folder, keeping its time. Error 58 if the new name is taken, 53 if
  // there is no such file. The rename is atomic.
  virtual void RenameFile(const std::u16string& path, const std::u16string& newPath) = 0;
  // Replaces `path` with a file of these bytes, completely or not at all: after an error the old
  // file, or none, is there, and no temporary file is left. Also removes temporary files of
  // requests that a killed host left in the folder.
  virtual void ReplaceContents(const std::u16string& path, std::string_view bytes) = 0;
};

}  // namespace platform
