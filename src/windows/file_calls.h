// The system's calls on files that the adapters make, so that a test can see how they are made and
// what another program's hold on a file leads to.
#pragma once

#include <functional>
#include <string>

#include "com/win32.h"

namespace windows {

// Results and errors (GetLastError) are the system's own.
class FileCalls {
 public:
  virtual ~FileCalls() = default;
  virtual HANDLE Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition,
                      DWORD flags);
  virtual bool Flush(HANDLE file);
  // Renames an open file, in place of another of that name.
  virtual bool Rename(HANDLE file, const std::wstring& newPath);
  virtual bool Move(const std::wstring& path, const std::wstring& newPath, DWORD flags);
  virtual bool Delete(const std::wstring& path);
  // Without handling messages: the host may not be entered again meanwhile.
  virtual void Wait(DWORD milliseconds);
};

FileCalls& SystemFileCalls();

// Makes a call on `path`, again and again for about a second while another program may be holding
// that file for a moment only, as virus scanners do with fresh files. Returns whether the call
// succeeded; if not, the last error is the call's.
bool Patiently(FileCalls& calls, const std::wstring& path, const std::function<bool()>& call);

// An open file; closed with its owner.
class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle();

  // INVALID_HANDLE_VALUE when it could not be opened.
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

// Opens a file patiently.
HANDLE OpenPatiently(FileCalls& calls, const std::wstring& path, DWORD access, DWORD sharing,
                     DWORD disposition, DWORD flags);

}  // namespace windows
