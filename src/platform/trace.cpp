#include "platform/trace.h"

#include <algorithm>
#include <limits>

#include "platform/platform.h"

namespace platform {
namespace {

// Of the calls being traced. Not a ThreadState: nothing of it is kept between two calls.
thread_local std::uint8_t depth = 0;

// A file's line is no call around others: it begins inside one and may end inside a later one.
std::uint8_t LevelsOf(TracedFile file) {
  return file == TracedFile::None ? 1 : 0;
}

}  // namespace

const char* NameOf(TracedFile file) {
  switch (file) {
    case TracedFile::None:
      break;
    case TracedFile::NewFHP:
      return "NewFHP";
    case TracedFile::NewCase:
      return "NewCase";
    case TracedFile::ExistCase:
      return "ExistCase";
  }
  return "";
}

const char* NameOf(Ending ending) {
  switch (ending) {
    case Ending::Done:
      return "Done";
    case Ending::Empty:
      return "Empty";
    case Ending::Failed:
      return "Failed";
    case Ending::Unshown:
      return "Unshown";
    case Ending::Raised:
      return "Raised";
    case Ending::Noted:
      return "Noted";
    case Ending::Deleted:
      return "Deleted";
    case Ending::Kept:
      return "Kept";
    case Ending::LeftToNewer:
      return "LeftToNewer";
    case Ending::SetAside:
      return "SetAside";
    case Ending::Renamed:
      return "Renamed";
  }
  return "";
}

const char* NameOf(Reason reason) {
  switch (reason) {
    case Reason::None:
      break;
    case Reason::Entered:
      return "Entered";
    case Reason::AlreadyLinked:
      return "AlreadyLinked";
    case Reason::NotLinked:
      return "NotLinked";
    case Reason::CannotBeEntered:
      return "CannotBeEntered";
    case Reason::DatabaseFailed:
      return "DatabaseFailed";
    case Reason::Cancelled:
      return "Cancelled";
    case Reason::Unchanged:
      return "Unchanged";
    case Reason::LinkKept:
      return "LinkKept";
    case Reason::Unanswered:
      return "Unanswered";
    case Reason::UnknownStatus:
      return "UnknownStatus";
    case Reason::Error:
      return "Error";
    case Reason::NotFound:
      return "NotFound";
    case Reason::Unreadable:
      return "Unreadable";
    case Reason::EmptyFile:
      return "EmptyFile";
    case Reason::TooLarge:
      return "TooLarge";
    case Reason::NotFit:
      return "NotFit";
    case Reason::Malformed:
      return "Malformed";
    case Reason::UnreadAnswer:
      return "UnreadAnswer";
    case Reason::NoWindow:
      return "NoWindow";
    case Reason::UnknownMessage:
      return "UnknownMessage";
    case Reason::LinkKeyUnreadable:
      return "LinkKeyUnreadable";
    case Reason::SinkFailed:
      return "SinkFailed";
  }
  return "";
}

TraceLevel LevelOf(const TraceLine& line) {
  switch (line.ending) {
    case Ending::Failed:
    case Ending::Unshown:
    case Ending::Raised:
      return TraceLevel::Error;
    case Ending::Noted:
    case Ending::Kept:
    case Ending::LeftToNewer:
    case Ending::SetAside:
    case Ending::Renamed:
      return TraceLevel::Warning;
    case Ending::Deleted:
      return TraceLevel::Information;
    case Ending::Done:
    case Ending::Empty:
      break;
  }
  return line.depth == 0 ? TraceLevel::Information : TraceLevel::Verbose;
}

void Traced::Begin(Procedure procedure, TracedFile file) noexcept {
  begun_ = {.procedure = procedure, .file = file, .depth = depth, .since = Current().trace.Now()};
  depth += LevelsOf(file);
}

void Traced::Write(Ending ending, Reason reason, std::int32_t error) noexcept {
  depth -= LevelsOf(begun_->file);
  if (begun_->procedure.isTracedIfItFails() &&
      (ending == Ending::Done || ending == Ending::Empty)) {
    return;
  }
  auto& trace = Current().trace;
  const std::int64_t longest = std::numeric_limits<std::uint32_t>::max();
  trace.Write({.procedure = begun_->procedure,
               .file = begun_->file,
               .ending = ending,
               .reason = reason,
               .error = error,
               .microseconds = static_cast<std::uint32_t>(
                   std::clamp<std::int64_t>(trace.Now() - begun_->since, 0, longest)),
               .depth = begun_->depth});
}

void Note(Procedure procedure, Reason reason, std::int32_t error) noexcept {
  Traced(procedure).End(Ending::Noted, reason, error);
}

}  // namespace platform
