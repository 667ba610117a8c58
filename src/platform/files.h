#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

// Tells a file from another that has taken its place.
struct FileStamp {
  // Bytes; -1 when there is no such file, or nobody can say.
  std::int64_t length = -1;
  // Time of its last write, in units of the system's own.
  std::int64_t written = 0;
  bool Exists() const { return length >= 0; }
  bool operator==(const FileStamp&) const = default;
};

// Files and folders by their full Windows path. Errors are the runtime's: 52 for a name that cannot
// be one, 53 file not found, 57, 61 disk full, 70 permission denied, 75 path/file access, 76 path
// not found.
class Files {
 public:
  virtual ~Files() = default;
  virtual bool FolderExists(const std::u16string& path) = 0;
  // One level; the parent must exist (76). Error 58 "File already exists" when the name is taken.
  virtual void CreateFolder(const std::u16string& path) = 0;
  // Bytes, 0 for a folder; error 53 for a missing file.
  virtual std::int64_t FileLength(const std::u16string& path) = 0;
  virtual FileStamp StampOf(const std::u16string& path) noexcept = 0;
  virtual void DeleteFile(const std::u16string& path) = 0;
  // Gives a file another name in the same folder, keeping its time. Error 58 when that name is
  // taken, 53 when there is no file; never anything in between.
  virtual void RenameFile(const std::u16string& path, const std::u16string& newPath) = 0;
  // Puts a file of these bytes in place of `path`, whole or not at all: after an error the older
  // file, or none, stands there, and no temporary file is left. Removes those of requests, too,
  // that a killed host has left in the folder.
  virtual void ReplaceContents(const std::u16string& path, std::string_view bytes) = 0;
};

}  // namespace platform
