#include "field-tests/trace_check.h"

#include <array>
#include <cstddef>
#include <string>

#include "field-tests/child.h"
#include "field-tests/computer.h"
#include "field-tests/core/gtest_output.h"
#include "field-tests/core/text.h"
#include "field-tests/wide.h"
#include "windows/etw_trace.h"
// Need win32.h in front of them.
#include <evntcons.h>
#include <evntrace.h>

namespace field_tests {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kSession = L"VilnorFieldTests";
constexpr const char* kProgram = "com_tests";
constexpr const char* kTest = "Binding.EarlyBoundCallWritesANewCase";
constexpr auto kItsOperation = u"WriteNewCase";
constexpr std::chrono::minutes kLimit(2);

struct Properties {
  explicit Properties(const fs::path& file) {
    base.Wnode.BufferSize = sizeof *this;
    base.Wnode.Flags = WNODE_FLAG_TRACED_GUID;
    base.Wnode.ClientContext = 1;  // the performance counter's clock
    base.LogFileMode = EVENT_TRACE_FILE_MODE_SEQUENTIAL;
    base.LoggerNameOffset = offsetof(Properties, name);
    base.LogFileNameOffset = offsetof(Properties, fileName);
    file.wstring().copy(fileName.data(), fileName.size() - 1);
  }

  EVENT_TRACE_PROPERTIES base{};
  std::array<wchar_t, MAX_PATH> name{};
  std::array<wchar_t, MAX_PATH> fileName{};
};

// Ends with this object, or with EndTraceSession().
class Session {
 public:
  explicit Session(const fs::path& file) {
    Properties properties(file);
    TRACEHANDLE handle = 0;
    status_ = StartTraceW(&handle, kSession, &properties.base);
    if (status_ == ERROR_SUCCESS) {
      status_ = EnableTraceEx2(handle, &windows::kTraceProvider, EVENT_CONTROL_CODE_ENABLE_PROVIDER,
                               TRACE_LEVEL_VERBOSE, 0, 0, 0, nullptr);
    }
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session() { EndTraceSession(); }

  // What the system said to its start.
  ULONG status() const { return status_; }

 private:
  ULONG status_;
};

struct Events {
  int number = 0;
  bool tellOfTheOperation = false;
};

void WINAPI Collect(EVENT_RECORD* event) {
  if (IsEqualGUID(event->EventHeader.ProviderId, windows::kTraceProvider)) {
    auto& events = *static_cast<Events*>(event->UserContext);
    ++events.number;
    // On a Windows that knows no self-describing events, their description comes first.
    events.tellOfTheOperation |= HoldsUtf16(
        {static_cast<const char*>(event->UserData), event->UserDataLength}, kItsOperation);
  }
}

Events EventsIn(const fs::path& file) {
  Events events;
  std::wstring name = file.wstring();
  EVENT_TRACE_LOGFILEW log{};
  log.LogFileName = name.data();
  log.ProcessTraceMode = PROCESS_TRACE_MODE_EVENT_RECORD;
  log.EventRecordCallback = Collect;
  log.Context = &events;
  TRACEHANDLE trace = OpenTraceW(&log);
  if (trace != INVALID_PROCESSTRACE_HANDLE) {
    ProcessTrace(&trace, 1, nullptr, nullptr);
    CloseTrace(trace);
  }
  return events;
}

// Whether it ran and passed. A filter that matches no test passes, too.
bool TestPasses(const Folders& folders) {
  Child child(Quoted((folders.programs / kProgram).wstring() + L".exe") +
                  L" --registration-free --gtest_filter=" + WideOf(kTest),
              folders.work / "output.txt");
  if (!child.started() || !child.WaitFor(kLimit)) {
    return false;
  }
  const auto ended = ReadTestLog(kProgram, child.Output()).ended;
  return ended.size() == 1 && ended.front().outcome == Outcome::Passed;
}

}  // namespace

Case CheckTrace(const Folders& folders, const Circumstances& circumstances) {
  Case result{.program = "trace",
              .name = "the events of the component's provider arrive",
              .outcome = Outcome::NotRun,
              .text = WhyNotRun(kProgram, kTest, circumstances)};
  if (result.text.empty() && !circumstances.machineKeys) {
    result.text = "only an administrator may record a trace: start run.cmd as administrator";
  }
  if (!result.text.empty()) {
    return result;
  }
  const fs::path file = folders.work / "trace.etl";
  ULONG status = ERROR_SUCCESS;
  bool passes = false;
  {
    const Session session(file);
    status = session.status();
    passes = TestPasses(folders);
  }
  const Events events = EventsIn(file);
  result.text = std::to_string(events.number) + " events arrived; StartTrace or EnableTraceEx2 " +
                "returned " + std::to_string(status) +
                (passes ? "" : "; the test whose calls are traced does not pass");
  if (passes && IsWine() && events.number == 0) {
    result.text = "Wine has no event tracing: " + result.text;
    return result;
  }
  result.outcome = passes && events.tellOfTheOperation ? Outcome::Passed : Outcome::Failed;
  return result;
}

void EndTraceSession() {
  Properties properties({});
  ControlTraceW(0, kSession, &properties.base, EVENT_TRACE_CONTROL_STOP);
}

}  // namespace field_tests
