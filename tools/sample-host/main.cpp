// KestraHost.exe: the smallest possible host of the component. A real host does the same: create
// BVilnor, connect a sink, call InitVilnor once, keep the message loop running.
#include <memory>
#include <optional>
#include <type_traits>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "box_watcher.h"
#include "com/bstr.h"
#include "com/com_error.h"
#include "com/com_ptr.h"
#include "com/wide_text.h"
#include "console.h"
#include "event_sink.h"
#include "message_loop.h"
#include "options.h"

namespace {

using com::CheckCall;
using com::ComPtr;
using sample_host::Call;
using sample_host::Options;
using sample_host::Print;
using sample_host::PrintError;

enum class ExitCode : int { Done = 0, Usage = 1, NoComponent = 2, CallFailed = 3, NoAnswer = 4 };

// The component lives in a single-threaded apartment: one thread, with a message loop.
struct Apartment {
  Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { CoUninitialize(); }
};

template <class Interface>
ComPtr<Interface> Create(const CLSID& classId, const IID& interfaceId) {
  ComPtr<Interface> object;
  CheckCall([&] {
    return CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId,
                            object.ReceiveVoid());
  });
  return object;
}

void Initialise(_BVilnor& vilnor, const Options& options) {
  BSTR connection = com::Bstr(options.connection).Detach();
  SHORT language = options.language;
  SHORT dbType = options.dbType;
  const HRESULT result = vilnor.InitVilnor(&connection, &language, &dbType);
  SysFreeString(connection);
  com::Check(result);
}

void Perform(Call& call, _BVilnor& vilnor) {
  Print(u"call " + call.text);
  if (const auto* const onSession =
          std::get_if<const sample_host::Operation<_BVilnor>*>(&call.operation)) {
    (*onSession)->call(vilnor, call.arguments);
  } else {
    // A DBVilnor keeps the database open for as long as it exists, so each use creates its own.
    const auto database = Create<_DBVilnor>(CLSID_DBVilnor, IID__DBVilnor);
    std::get<const sample_host::Operation<_DBVilnor>*>(call.operation)
        ->call(*database.get(), call.arguments);
  }
  Print(u"return");
}

std::optional<sample_host::AwaitedAnswer> AnswerOf(Call& call) {
  const auto* const onSession =
      std::get_if<const sample_host::Operation<_BVilnor>*>(&call.operation);
  if (onSession == nullptr || (*onSession)->answerMessage == 0) {
    return std::nullopt;
  }
  sample_host::AwaitedAnswer answer{(*onSession)->answerMessage, std::nullopt};
  if ((*onSession)->answerKey >= 0) {
    const auto index = static_cast<std::size_t>((*onSession)->answerKey);
    answer.key = static_cast<WPARAM>(*call.arguments.Number(index));
  }
  return answer;
}

// False if an expected answer did not come.
bool WaitForAnswer(Call& call, std::chrono::seconds bound) {
  const auto answer = AnswerOf(call);
  if (!answer || bound.count() == 0) {
    return true;
  }
  const auto message = automation::Decimal10(answer->message);
  if (sample_host::RunUntilAnswered(*answer, bound)) {
    Print(u"notification " + message + u" handled");
    return true;
  }
  PrintError(u"No notification " + message + u" within " + automation::Decimal10(bound.count()) +
             u" s.");
  return false;
}

ExitCode PerformAll(Options& options, _BVilnor& vilnor) {
  try {
    Initialise(vilnor, options);
    for (auto& call : options.calls) {
      Perform(call, vilnor);
      if (!WaitForAnswer(call, options.wait)) {
        return ExitCode::NoAnswer;
      }
    }
    return ExitCode::Done;
  } catch (const automation::AutomationError& error) {
    PrintError(u"The call failed: " + automation::FromUtf8(error.what()));
    return ExitCode::CallFailed;
  }
}

ExitCode Run(Options& options) {
  const Apartment apartment;
  const bool watch = options.boxes.answer || options.boxes.keep;
  const auto watcher = watch ? std::make_unique<sample_host::BoxWatcher>(options.boxes) : nullptr;
  try {
    const auto vilnor = Create<_BVilnor>(CLSID_BVilnor, IID__BVilnor);
    const sample_host::EventSink sink(*vilnor.get());
    return PerformAll(options, *vilnor.get());
  } catch (const automation::AutomationError& error) {
    PrintError(u"Vilnor.BVilnor cannot be created: " + automation::FromUtf8(error.what()) +
               u"\r\nIs it registered (regsvr32 Vilnor.dll)?");
    return ExitCode::NoComponent;
  }
}

}  // namespace

int wmain(int count, wchar_t** words) {
  std::vector<std::u16string> arguments;
  for (int i = 1; i < count; ++i) {
    arguments.push_back(com::FromWide(words[i]));
  }
  try {
    Options options = sample_host::ParseOptions(arguments);
    if (options.help) {
      Print(sample_host::Usage());
      return static_cast<int>(ExitCode::Done);
    }
    return static_cast<int>(Run(options));
  } catch (const sample_host::UsageError& error) {
    PrintError(error.text + u"\r\n\r\n" + sample_host::Usage());
    return static_cast<int>(ExitCode::Usage);
  }
}
