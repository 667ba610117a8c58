// The adapters' file system calls. A test can check how they are made, and what happens while
// another program holds a file.
#pragma once

#include <functional>
#include <string>

#include "com/win32.h"

namespace windows {

// Results and errors (GetLastError) are the system's.
class FileCalls {
 public:
  virtual ~FileCalls() = default;
  virtual HANDLE Open(const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition,
                      DWORD flags);
  virtual bool Flush(HANDLE file);
  // Renames an open file, replacing a file of that name.
  virtual bool Rename(HANDLE file, const std::wstring& newPath);
  virtual bool Move(const std::wstring& path, const std::wstring& newPath, DWORD flags);
  virtual bool Delete(const std::wstring& path);
  // Handles no messages: the host must not be re-entered meanwhile.
  virtual void Wait(DWORD milliseconds);
};

FileCalls& SystemFileCalls();

// Makes a call on `path`, and retries for about a second while another program may be holding the
// file briefly, as virus scanners do with new files. Returns whether the call succeeded; if not,
// the last error is the call's.
bool Patiently(FileCalls& calls, const std::wstring& path, const std::function<bool()>& call);

// An open file, closed by the destructor.
class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  ~FileHandle();

  // INVALID_HANDLE_VALUE if it could not be opened.
  HANDLE get() const { return handle_; }

 private:
  HANDLE handle_;
};

// Opens a file, retrying like Patiently().
HANDLE OpenPatiently(FileCalls& calls, const std::wstring& path, DWORD access, DWORD sharing,
                     DWORD disposition, DWORD flags);

}  // namespace windows
