// Deleting result files and setting them aside.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/files.h"
#include "platform/trace.h"

namespace exchange {

// The first word of every result's file name, and the one that replaces it when a result that has
// been entered cannot be deleted. No host reads a file with that name.
inline constexpr std::u16string_view kResultWord = u"Out";
inline constexpr std::u16string_view kDealtWithWord = u"Done";

// A result file while it is being read. A message box may stay open for long, and the link program
// may meanwhile answer another request under the same name. Such a newer file is left alone: it has
// its own message.
//
// Its destructor traces what became of the file, and why.
class ResultFile {
 public:
  ResultFile(std::u16string path, platform::Procedure reader, platform::TracedFile kind);
  ResultFile(const ResultFile&) = delete;
  ResultFile& operator=(const ResultFile&) = delete;
  ~ResultFile();

  const std::u16string& path() const { return path_; }
  // The reason for what happens to the file, for the trace. Until it is given, an error.
  void Because(platform::Reason reason, std::int32_t error = 0);
  // Call this when the file has been loaded: until then it may still have been written to.
  void TakeStamp();
  // Deletes a result that has been dealt with. If that fails, raises the deletion's error, but
  // first renames the file, so that it does not block a later result:
  // "DoneNewCase4711 2026-11-16 14.05.00.xml".
  void Delete();
  // Sets aside a result that a later read could enter; see below.
  void SetAside();

 private:
  bool IsReplaced();

  std::u16string path_;
  platform::FileStamp stamp_;
  platform::Traced traced_;
  platform::Ending ending_ = platform::Ending::Kept;
  platform::Reason reason_ = platform::Reason::Error;
  std::int32_t error_ = 0;
};

// Renames a result file so that it belongs to no request: appends the current date and time,
// "OutNewCase4711 2026-11-16 14.05.00.xml" (and a number if that second's name is taken). Does
// nothing if the file does not exist. Raises the runtime's error if the file cannot be renamed; it
// then keeps its name.
void SetAside(const std::u16string& resultPath);

// The same for an answer that a new one would overwrite, unless this thread is reading it.
void SetUnreadAside(const std::u16string& resultPath, platform::TracedFile kind);

}  // namespace exchange
