// What becomes of a result file.
#pragma once

#include <string>

#include "platform/files.h"

namespace exchange {

// A result file while it is read. A box may wait long, and the link program may meanwhile answer a
// further request under the same name: that newer file is left alone, its own message tells of it.
class ResultFile {
 public:
  explicit ResultFile(std::u16string path);
  ResultFile(const ResultFile&) = delete;
  ResultFile& operator=(const ResultFile&) = delete;
  ~ResultFile();

  const std::u16string& path() const { return path_; }
  // To be called once the file has been loaded: until then its writer may have been at work.
  void TakeStamp();
  // Takes away a result that has been dealt with. One that cannot be deleted is renamed to
  // "DoneNewCase4711 2026-11-16 14.05.00.xml", so that it stands in no later result's way; the
  // error is the deletion's all the same.
  void Delete() const;
  // Sets aside a result that another reading could enter; see below.
  void SetAside() const;

 private:
  bool IsReplaced() const;

  std::u16string path_;
  platform::FileStamp stamp_;
};

// Gives a result file a name that no request answers to, in the same folder: its own with the
// present date and time, "OutNewCase4711 2026-11-16 14.05.00.xml" (further ones of the same second
// with a number behind). Does nothing when there is no such file. The runtime's error when it
// cannot be renamed; it then keeps its name.
void SetAside(const std::u16string& resultPath);

// The same for an answer that a new request's would overwrite, unless this thread is reading it.
void SetUnreadAside(const std::u16string& resultPath);

}  // namespace exchange
