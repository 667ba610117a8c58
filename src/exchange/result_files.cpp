#include "exchange/result_files.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "automation/automation_error.h"
#include "automation/date.h"
#include "automation/text.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "platform/thread_state.h"
#include "util/error_trap.h"

namespace exchange {
namespace {

using automation::AutomationError;
using automation::RuntimeError;
using platform::Ending;

constexpr std::u16string_view kExtension = u".xml";
// If one second has used up this many names, something is wrong with the folder.
constexpr std::int32_t kMostOfOneSecond = 1000;

// " 2026-11-16 14.05.00": a file name cannot contain ":".
std::u16string Moment() {
  const automation::Date now = platform::Current().clock.Now();
  std::u16string time = automation::FormatTime(now);
  std::replace(time.begin(), time.end(), u':', u'.');
  return u" " + automation::FormatDate(now, u"yyyy-mm-dd") + u" " + time;
}

// True if the file was renamed or does not exist, false if the new name is taken.
bool TryName(const std::u16string& path, const std::u16string& name) {
  auto& files = platform::Current().files;
  try {
    files.RenameFile(path, name);
  } catch (const AutomationError& error) {
    if (error.Is(RuntimeError::FileAlreadyExists)) {
      return false;
    }
    // For a name that is too long, the system also reports a missing file.
    if (!error.Is(RuntimeError::FileNotFound) || files.StampOf(path).Exists()) {
      throw;
    }
  }
  return true;
}

// Replaces the first word, "Out", and appends the date and time.
void Rename(const std::u16string& resultPath, std::u16string_view firstWord) {
  const std::size_t name = resultPath.rfind(u'\\') + 1;
  const std::size_t afterWord = name + kResultWord.size();
  std::u16string stem = resultPath.substr(0, name).append(firstWord);
  stem.append(resultPath, afterWord, resultPath.size() - kExtension.size() - afterWord);
  stem += Moment();
  std::u16string newName = stem;
  for (std::int32_t number = 2; !TryName(resultPath, newName + std::u16string(kExtension));
       ++number) {
    if (number > kMostOfOneSecond) {
      throw AutomationError(RuntimeError::FileAlreadyExists);
    }
    newName = stem + u" " + automation::Decimal10(number);
  }
}

// The results that the thread is reading. A second read can begin while the first one's message box
// is open.
struct Readings {
  std::vector<std::u16string> paths;
};

std::vector<std::u16string>& BeingRead() {
  return platform::ThreadState<Readings>().paths;
}

}  // namespace

ResultFile::ResultFile(std::u16string path, platform::Procedure reader, platform::TracedFile kind)
    : path_(std::move(path)), traced_(reader, kind) {
  BeingRead().push_back(path_);
}

ResultFile::~ResultFile() {
  BeingRead().pop_back();
  traced_.End(ending_, reason_, error_);
}

void ResultFile::Because(platform::Reason reason, std::int32_t error) {
  reason_ = reason;
  error_ = error;
}

void ResultFile::TakeStamp() {
  stamp_ = platform::Current().files.StampOf(path_);
}

bool ResultFile::IsReplaced() {
  const platform::FileStamp now = platform::Current().files.StampOf(path_);
  const bool isReplaced = now.Exists() && now != stamp_;
  if (isReplaced) {
    ending_ = Ending::LeftToNewer;
  }
  return isReplaced;
}

void ResultFile::Delete() {
  if (IsReplaced()) {
    return;
  }
  try {
    platform::Current().files.DeleteFile(path_);
    ending_ = Ending::Deleted;
  } catch (...) {
    util::IgnoreErrors([&] {
      Rename(path_, kDealtWithWord);
      ending_ = Ending::Renamed;
    });
    throw;
  }
}

void ResultFile::SetAside() {
  if (!IsReplaced()) {
    exchange::SetAside(path_);
    ending_ = Ending::SetAside;
  }
}

void SetAside(const std::u16string& resultPath) {
  Rename(resultPath, kResultWord);
}

void SetUnreadAside(const std::u16string& resultPath, platform::TracedFile kind) {
  const auto& beingRead = BeingRead();
  if (std::find(beingRead.begin(), beingRead.end(), resultPath) != beingRead.end()) {
    return;
  }
  platform::Traced traced(u"SetUnreadAside", kind);
  const bool waits = traced.IsOn() && platform::Current().files.StampOf(resultPath).Exists();
  try {
    SetAside(resultPath);
  } catch (...) {
    traced.End(Ending::Kept, platform::Reason::UnreadAnswer, automation::CurrentErrorNumber());
    throw;
  }
  traced.End(waits ? Ending::SetAside : Ending::Empty, platform::Reason::UnreadAnswer);
}

}  // namespace exchange
