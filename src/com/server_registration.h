// What an in-process server enters into the registry about its file, for every user of the machine,
// and takes out again.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "com/win32.h"

namespace com {

// All keys are below HKEY_LOCAL_MACHINE\Software\Classes.
struct RegistryText {
  std::wstring key;
  // Empty: the key's default value.
  std::wstring name;
  std::wstring text;
};

struct RemovedKey {
  std::wstring key;
  // The key stays where this does not stand in the registry: it belongs to somebody else by now.
  std::optional<RegistryText> proof;
};

// What is entered and removed together: a class, or the type library.
struct RegisteredPart {
  // A text at the key `key` + `below`.
  void Add(const std::wstring& key, const wchar_t* below, const wchar_t* name,
           const std::wstring& text);

  std::vector<RegistryText> texts;
  // Keys whose default value is the path of the file that serves the part.
  std::vector<std::wstring> fileKeys;
  // Removed whole with the part; the one with the path last, so that a removal that fails can be
  // tried again.
  std::vector<RemovedKey> removed;
  // Removed after them where no key is left in it; none if empty.
  std::wstring parent;
};

// Software\Classes of the machine itself. HKEY_CLASSES_ROOT shows the user's own classes in front
// of it, and writes go there where a user has the key. A test derives one that refuses some calls.
class MachineClasses {
 public:
  MachineClasses() = default;
  MachineClasses(const MachineClasses&) = delete;
  MachineClasses& operator=(const MachineClasses&) = delete;
  virtual ~MachineClasses() = default;

  // The system's error codes.
  virtual LSTATUS Write(const RegistryText& entry);
  // With all below it. ERROR_FILE_NOT_FOUND when it is not there.
  virtual LSTATUS Remove(const std::wstring& key);
};

// S_OK, or the system's code of the first write that failed (0x80070005, access denied, for a user
// without the right to it); the registry is then as it was.
HRESULT Register(const std::vector<RegisteredPart>& parts, MachineClasses& classes);

// Removes the parts that name `path` as their file; one that names another file, or none, is left
// alone. S_OK, or the system's code of the first removal that failed, which ends its part's
// removal; the other parts are still tried.
HRESULT Unregister(const std::vector<RegisteredPart>& parts, const std::wstring& path,
                   MachineClasses& classes);

// {xxxxxxxx-…} in capitals.
std::wstring TextOf(const GUID& identifier);

}  // namespace com
