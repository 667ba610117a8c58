#include "field-tests/trace_check.h"

#include <array>
#include <cstddef>
#include <cstring>
#include <set>

#include "field-tests/child.h"
#include "field-tests/computer.h"
#include "field-tests/wide.h"
#include "windows/etw_trace.h"
// Need win32.h in front of them.
#include <evntcons.h>
#include <evntrace.h>

namespace field_tests {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kSession = L"VilnorFieldTests";
constexpr const wchar_t* kTest = L"Binding.EarlyBoundCallWritesANewCase";
constexpr const wchar_t* kItsOperation = L"WriteNewCase";
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

// Ends with this object, or with Stop().
class Session {
 public:
  explicit Session(const fs::path& file) : file_(file) {
    // An earlier run that was ended can have left one.
    Stop();
    Properties properties(file_);
    status_ = StartTraceW(&handle_, kSession, &properties.base);
    if (status_ == ERROR_SUCCESS) {
      status_ =
          EnableTraceEx2(handle_, &windows::kTraceProvider, EVENT_CONTROL_CODE_ENABLE_PROVIDER,
                         TRACE_LEVEL_VERBOSE, 0, 0, 0, nullptr);
    }
  }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session() { Stop(); }

  // The system's answer to its start.
  ULONG status() const { return status_; }
  void Stop() {
    Properties properties(file_);
    ControlTraceW(0, kSession, &properties.base, EVENT_TRACE_CONTROL_STOP);
  }

 private:
  fs::path file_;
  TRACEHANDLE handle_ = 0;
  ULONG status_ = ERROR_SUCCESS;
};

using Operations = std::multiset<std::wstring>;

void WINAPI Collect(EVENT_RECORD* event) {
  if (IsEqualGUID(event->EventHeader.ProviderId, windows::kTraceProvider)) {
    // Its first field, a text that ends with a zero.
    std::wstring data(event->UserDataLength / sizeof(wchar_t), L'\0');
    std::memcpy(data.data(), event->UserData, data.size() * sizeof(wchar_t));
    static_cast<Operations*>(event->UserContext)->insert(data.c_str());
  }
}

// The operations that the session's file tells.
Operations OperationsIn(fs::path file) {
  Operations operations;
  std::wstring name = file.wstring();
  EVENT_TRACE_LOGFILEW log{};
  log.LogFileName = name.data();
  log.ProcessTraceMode = PROCESS_TRACE_MODE_EVENT_RECORD;
  log.EventRecordCallback = Collect;
  log.Context = &operations;
  TRACEHANDLE trace = OpenTraceW(&log);
  if (trace != INVALID_PROCESSTRACE_HANDLE) {
    ProcessTrace(&trace, 1, nullptr, nullptr);
    CloseTrace(trace);
  }
  return operations;
}

std::string Recorded(const Operations& operations) {
  std::string text = std::to_string(operations.size()) + " events arrived";
  for (const auto& operation : operations) {
    text += ", " + Utf8(operation);
  }
  return text;
}

}  // namespace

Case CheckTrace(const Folders& folders) {
  Case result{.program = "trace",
              .name = "the events of the component's provider arrive",
              .outcome = Outcome::NotRun,
              .text = ""};
  const fs::path file = folders.work / "trace.etl";
  Session session(file);
  if (session.status() == ERROR_ACCESS_DENIED) {
    result.text =
        "it needs the right to start a session of event tracing: start run.cmd as administrator";
    return result;
  }
  Child child(Quoted((folders.programs / "com_tests.exe").wstring()) +
                  L" --registration-free --gtest_filter=" + kTest,
              folders.work / "output.txt");
  const bool ended = child.started() && child.WaitFor(kLimit) && child.ExitCode() == 0;
  session.Stop();
  const Operations operations = OperationsIn(file);
  result.text = Recorded(operations) + "; the session's start was answered with " +
                std::to_string(session.status());
  if (!ended) {
    result.outcome = Outcome::Failed;
    result.text += "; the test whose calls are traced failed";
  } else if (operations.contains(kItsOperation)) {
    result.outcome = Outcome::Passed;
  } else if (IsWine() && operations.empty()) {
    result.text = "Wine has no event tracing: " + result.text;
  } else {
    result.outcome = Outcome::Failed;
  }
  return result;
}

}  // namespace field_tests
