// What the diagnosis asks of Windows and the component does not: one method per question. No answer
// changes anything. Errors are AutomationErrors.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace diagnosis {

struct WindowsVersion {
  std::uint32_t major = 0;
  std::uint32_t minor = 0;
  std::uint32_t build = 0;
  bool server = false;
  // Of Windows, and of this process: 32 or 64.
  int bits = 32;
  int processBits = 32;
};

// Where a class is registered, in the order in which COM looks.
enum class Origin { HostManifest, User, Machine };

struct ClassRegistration {
  Origin origin = Origin::Machine;
  // Of the DLL; "" if the registration does not name one.
  std::u16string path;
};

enum class Signature {
  None,
  Good,
  // The file is not what was signed.
  Broken,
  // The certificate is not trusted here, or has expired or been revoked.
  Untrusted,
};

struct ProgramFile {
  bool exists = false;
  // 32, 64, or 0 for a file that is no program.
  int bits = 0;
  // "" for a file without a version.
  std::u16string version;
  Signature signature = Signature::None;
};

struct FolderFacts {
  // What an attempt to open the folder itself with these rights says.
  bool mayRead = false;
  bool mayAddFiles = false;
  bool mayAddFolders = false;
  bool onNetwork = false;
  // The folder's redirected twin in the user's VirtualStore; "" if there is none.
  std::u16string twin;
};

struct FolderEntry {
  std::u16string name;
  std::int64_t ageInMinutes = 0;
};

class Computer {
 public:
  virtual ~Computer() = default;
  virtual WindowsVersion Version() = 0;
  // The registrations of the component's session class. `hostPrograms` are paths of programs that
  // may have it in their manifest; those that do not exist have none.
  virtual std::vector<ClassRegistration> Registrations(
      const std::vector<std::u16string>& hostPrograms) = 0;
  virtual ProgramFile Examine(const std::u16string& path) = 0;
  // This program's own file.
  virtual std::u16string OwnPath() = 0;
  virtual FolderFacts ExamineFolder(const std::u16string& path) = 0;
  // The files in the folder, without subfolders.
  virtual std::vector<FolderEntry> FilesIn(const std::u16string& folder) = 0;
  // For each top-level window of the class in this session, the name of the program that has it
  // ("Kestra.Main.exe"), followed by its process id.
  struct WindowOwner {
    std::u16string program;
    std::uint32_t process = 0;
  };
  virtual std::vector<WindowOwner> WindowsOfClass(std::u16string_view className) = 0;
};

}  // namespace diagnosis
