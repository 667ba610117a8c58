// The trace as events of the system's own tracing (ETW), self-describing, so that the system's
// tools show them without anything installed. docs/trace.md.
#pragma once

#include "com/win32.h"
#include "platform/trace.h"
// Must follow win32.h.
#include <evntprov.h>

namespace windows {

// Computed from the provider's name as tracing tools do it, so that they need only the name
// (tests/architecture/trace_test.py).
inline constexpr GUID kTraceProvider = {
    0xB9F703D5, 0xCC0D, 0x51D4, {0x59, 0x53, 0xC3, 0x3B, 0x68, 0x9D, 0xD1, 0x81}};

// The system's calls. A test can take the system's part. Results are the system's.
class EtwCalls {
 public:
  virtual ~EtwCalls() = default;
  virtual ULONG Register(const GUID& provider, PENABLECALLBACK enabled, void* context,
                         REGHANDLE& registration);
  // Tells the system the provider's name and that events describe themselves. A Windows 7 without
  // its updates has no such call: false.
  virtual bool SetTraits(REGHANDLE registration, const void* traits, ULONG size);
  virtual ULONG Write(REGHANDLE registration, const EVENT_DESCRIPTOR& event, ULONG count,
                      EVENT_DATA_DESCRIPTOR* data);
  virtual ULONG Unregister(REGHANDLE registration);
};

EtwCalls& SystemEtwCalls();

class EtwTrace : public platform::Trace {
 public:
  // Registers the provider, and turns the trace on whenever a session listens.
  explicit EtwTrace(EtwCalls& calls = SystemEtwCalls());
  EtwTrace(const EtwTrace&) = delete;
  EtwTrace& operator=(const EtwTrace&) = delete;
  ~EtwTrace() override;

  std::int64_t Now() noexcept override;
  void Write(const platform::TraceLine& line) noexcept override;

 private:
  EtwCalls& calls_;
  // 0: nobody can listen.
  REGHANDLE registration_ = 0;
};

}  // namespace windows
