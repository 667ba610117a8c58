#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

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
  virtual void DeleteFile(const std::u16string& path) = 0;
  // Puts a file of these bytes in place of `path`, whole or not at all: after an error the older
  // file, or none, stands there, and no temporary file is left.
  virtual void ReplaceContents(const std::u16string& path, std::string_view bytes) = 0;
};

}  // namespace platform
