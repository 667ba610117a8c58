#pragma once

#include "diagnosis/core/computer.h"

namespace diagnosis {

// This computer, seen by the user who runs the program. Folders are opened, never written to.
class WindowsComputer : public Computer {
 public:
  WindowsVersion Version() override;
  std::vector<ClassRegistration> Registrations(
      const std::vector<std::u16string>& hostPrograms) override;
  ProgramFile Examine(const std::u16string& path) override;
  std::u16string OwnPath() override;
  FolderFacts ExamineFolder(const std::u16string& path) override;
  std::vector<FolderEntry> FilesIn(const std::u16string& folder) override;
  std::vector<WindowOwner> WindowsOfClass(std::u16string_view className) override;
};

}  // namespace diagnosis
