#pragma once

#include "platform/files.h"

namespace native {

// Files and folders of the native build, through std::filesystem.
class LocalFiles : public platform::Files {
 public:
  bool FolderExists(const std::u16string& path) override;
  void CreateFolder(const std::u16string& path) override;
  std::int64_t FileLength(const std::u16string& path) override;
  platform::FileStamp StampOf(const std::u16string& path) noexcept override;
  void DeleteFile(const std::u16string& path) override;
  void RenameFile(const std::u16string& path, const std::u16string& newPath) override;
  void ReplaceContents(const std::u16string& path, std::string_view bytes) override;
};

}  // namespace native
