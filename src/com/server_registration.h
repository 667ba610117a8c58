// Registers and unregisters an in-process server's file, for every user of the machine.
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
  // If the registry does not hold this, the key stays: it belongs to another program by now.
  std::optional<RegistryText> proof;
};

// Entries that are added and removed together: those of a class, or of the type library.
struct RegisteredPart {
  // Adds a text at the key `key` + `below`.
  void Add(const std::wstring& key, const wchar_t* below, const wchar_t* name,
           const std::wstring& text);

  std::vector<RegistryText> texts;
  // Keys whose default value is the path of the file that implements the part.
  std::vector<std::wstring> fileKeys;
  // Removed with all subkeys. The one with the path comes last, so that a failed removal can be
  // retried.
  std::vector<RemovedKey> removed;
  // Removed afterwards if it has no subkeys left; "" for none.
  std::wstring parent;
};

// The machine's own Software\Classes. In HKEY_CLASSES_ROOT the user's own classes come first, and a
// write goes to them if the user has the key. A test derives one that refuses some calls.
class MachineClasses {
 public:
  MachineClasses() = default;
  MachineClasses(const MachineClasses&) = delete;
  MachineClasses& operator=(const MachineClasses&) = delete;
  virtual ~MachineClasses() = default;

  // Both return the system's error codes.
  virtual LSTATUS Write(const RegistryText& entry);
  // Removes the subkeys too. ERROR_FILE_NOT_FOUND when the key is missing.
  virtual LSTATUS Remove(const std::wstring& key);
};

// S_OK, or the system's code for the first write that failed (0x80070005, access denied, for a user
// without the right to write); all earlier writes are then undone.
HRESULT Register(const std::vector<RegisteredPart>& parts, MachineClasses& classes);

// Removes the parts that name `path` as their file; a part that names another file, or none, is
// left alone. S_OK, or the system's code for the first removal that failed. A failure ends the
// removal of its part; the other parts are still tried.
HRESULT Unregister(const std::vector<RegisteredPart>& parts, const std::wstring& path,
                   MachineClasses& classes);

// {XXXXXXXX-…}, in capitals.
std::wstring GuidText(const GUID& identifier);

}  // namespace com
