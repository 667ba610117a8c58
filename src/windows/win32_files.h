#pragma once

#include "platform/files.h"

namespace windows {

// Files and folders by the Win32 calls. A path whose folder is missing is a missing file (53) where
// a file is asked for, and a missing path (76) where something is to be made.
class Win32Files : public platform::Files {
 public:
  bool FolderExists(const std::u16string& path) override;
  void CreateFolder(const std::u16string& path) override;
  std::int64_t FileLength(const std::u16string& path) override;
  void DeleteFile(const std::u16string& path) override;
  // Written as `path`.tmp, flushed to the disk and renamed.
  void ReplaceContents(const std::u16string& path, std::string_view bytes) override;
};

}  // namespace windows
