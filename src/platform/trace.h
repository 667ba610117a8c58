// What the component tells of its work to whoever listens with the system's own tools: one kind of
// line, made of closed words and numbers. No type here can hold a patient's name, a key, a path or
// a statement. docs/trace.md explains every word.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>

#include "platform/procedure.h"

namespace platform {

// The kind of request whose file a line is about.
enum class TracedFile : std::uint8_t { None, NewFHP, NewCase, ExistCase };

// How a procedure ended; from Deleted on, what became of a file.
enum class Ending : std::uint8_t {
  Done,
  Empty,
  Failed,
  Unshown,
  Raised,
  Noted,
  Deleted,
  Kept,
  LeftToNewer,
  SetAside,
  Renamed
};

// Why.
enum class Reason : std::uint8_t {
  None,
  Entered,
  AlreadyLinked,
  NotLinked,
  CannotBeEntered,
  DatabaseFailed,
  Cancelled,
  Unchanged,
  LinkKept,
  Unanswered,
  UnknownStatus,
  Error,
  NotFound,
  Unreadable,
  EmptyFile,
  TooLarge,
  NotFit,
  Malformed,
  UnreadAnswer,
  NoWindow,
  UnknownMessage,
  LinkKeyUnreadable,
  SinkFailed
};

// As the lines show them: the enumerator's name, "" for None.
const char* NameOf(TracedFile file);
const char* NameOf(Ending ending);
const char* NameOf(Reason reason);

struct TraceLine {
  Procedure procedure;
  TracedFile file = TracedFile::None;
  Ending ending = Ending::Done;
  Reason reason = Reason::None;
  // The number in the message box, a parser's code or an HRESULT; 0 without an error.
  std::int32_t error = 0;
  std::uint32_t microseconds = 0;
  // 0 for what the host or a message called, 1 for what that called, and so on. A line about a file
  // has the depth of where it began, and adds none.
  std::uint8_t depth = 0;
};

// How important a line is, in the system's own numbers.
enum class TraceLevel : std::uint8_t { Error = 2, Warning = 3, Information = 4, Verbose = 5 };
TraceLevel LevelOf(const TraceLine& line);

class Trace {
 public:
  virtual ~Trace() = default;
  // Microseconds since a moment of its own.
  virtual std::int64_t Now() noexcept = 0;
  virtual void Write(const TraceLine& line) noexcept = 0;
};

// Whether anybody listens, in the whole process; the trace sets it. While nobody does, a call tests
// it and does nothing else for the trace.
inline std::atomic<bool> traceIsOn = false;

// A call to be traced, from its construction until End(), which must follow.
class Traced {
 public:
  explicit Traced(Procedure procedure, TracedFile file = TracedFile::None) {
    if (traceIsOn.load(std::memory_order_relaxed)) {
      Begin(procedure, file);
    }
  }
  Traced(const Traced&) = delete;
  Traced& operator=(const Traced&) = delete;

  // Whether there is a line to write.
  bool IsOn() const { return begun_.has_value(); }
  void End(Ending ending, Reason reason = Reason::None, std::int32_t error = 0) {
    if (IsOn()) {
      Write(ending, reason, error);
    }
  }

 private:
  struct Begun {
    Procedure procedure;
    TracedFile file;
    std::uint8_t depth;
    std::int64_t since;
  };

  void Begin(Procedure procedure, TracedFile file) noexcept;
  void Write(Ending ending, Reason reason, std::int32_t error) noexcept;

  std::optional<Begun> begun_;
};

// A line of its own in the middle of a procedure.
void Note(Procedure procedure, Reason reason, std::int32_t error = 0) noexcept;

}  // namespace platform
