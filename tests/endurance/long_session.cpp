// LongSession.exe: a host process that goes on for years. In one process and thread it creates and
// releases objects of each class, then makes round trips, and says at times what it holds.
//   LongSession CONNECTION EXCHANGE COUNT STARTS
// EXCHANGE is the exchange directory. COUNT objects of each class and COUNT round trips, in which
// this program itself is Vilnor Link: it puts the result there and posts the message. Then STARTS
// round trips with the real Link.exe. Prints
//   held PHASE DONE private KB handles N gdi N user N windows N
//   unloadable yes|no     whether every reference to an object is back after the creations
// Exit code: 0 done, 1 wrong command line, 2 something did not work.
#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "com/bstr.h"
#include "com/com_error.h"
#include "com/com_ptr.h"
#include "com/wide_text.h"
#include "message_loop.h"
#include "process_counts.h"
#include "typelib/Vilnor.h"

namespace {

using automation::Decimal10;
using com::Check;
using com::ComPtr;

constexpr UINT kNewCaseAnswer = 10002;
constexpr std::chrono::seconds kBound{120};
constexpr long kPatient = 4711;
constexpr int kSent = 5;
constexpr int kWithdrawn = 7;
constexpr long kCase = 50'000'000;
constexpr int kWarm = 100;  // repetitions until everything that is made once is there
constexpr int kWarmStarts = 10;

// A text that calls take by reference.
class Text {
 public:
  explicit Text(std::u16string_view text) : text_(com::Bstr(text).Detach()) {}
  Text(const Text&) = delete;
  Text& operator=(const Text&) = delete;
  ~Text() { SysFreeString(text_); }
  BSTR* Reference() { return &text_; }
  BSTR get() const { return text_; }

 private:
  BSTR text_;
};

void Tell(const char* phase, int done) {
  const auto counts = endurance::CountNow();
  std::printf("held %s %d private %lu handles %d gdi %d user %d windows %d\n", phase, done,
              static_cast<unsigned long>(counts.privateKilobytes), counts.handles,
              counts.gdiObjects, counts.userObjects, counts.windows);
  std::fflush(stdout);
}

// As in every host: without a loop Wine keeps what a window leaves behind for the thread to handle.
void DispatchMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
    DispatchMessageW(&message);
  }
}

// Does it `count` times and tells what is held after the first `warm`, after ten times as many and
// after the last.
template <class Task>
void Repeat(const char* phase, int count, int warm, Task task) {
  for (int done = 1; done <= count; ++done) {
    task(done);
    DispatchMessages();
    if (done == warm || done == 10 * warm || done == count) {
      Tell(phase, done);
    }
  }
}

template <class Interface>
ComPtr<Interface> Create(const CLSID& classId, const IID& interfaceId) {
  ComPtr<Interface> object;
  Check(
      CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId, object.ReceiveVoid()));
  return object;
}

ComPtr<_BVilnor> NewSession() {
  return Create<_BVilnor>(CLSID_BVilnor, IID__BVilnor);
}

bool Unloadable() {
  const auto ask = reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"Vilnor.dll"), "DllCanUnloadNow")));
  return ask() == S_OK;
}

void Require(bool holds, const std::string& problem) {
  if (!holds) {
    throw std::runtime_error(problem);
  }
}

void CreateEachClass(int count) {
  Repeat("BVilnor", count, kWarm, [](int /*done*/) { NewSession(); });
  Repeat("DBVilnor", count, kWarm,
         [](int /*done*/) { Create<_DBVilnor>(CLSID_DBVilnor, IID__DBVilnor); });
  std::printf("unloadable %s\n", Unloadable() ? "yes" : "no");
}

bool Exists(const std::u16string& file) {
  return GetFileAttributesW(com::Wide(file).c_str()) != INVALID_FILE_ATTRIBUTES;
}

class RoundTrips {
 public:
  explicit RoundTrips(const std::u16string& exchange)
      : exchange_(exchange),
        resultFile_(exchange + u"\\OutNewCase" + Decimal10(kPatient) + u".xml"),
        session_(NewSession()) {}

  // The request is written, the result comes, the message is handled. Every other time the case is
  // withdrawn, so that the database stays as large as it is.
  void Make(int number) {
    long patient = kPatient;
    long practitioner = 12;
    long company = 3;
    com::Bstr request;
    Check(session_->WriteNewCase(&patient, &practitioner, &company, identity_.Reference(),
                                 firstName_.Reference(), lastName_.Reference(),
                                 Text(exchange_).get(), request.Receive()));
    PutResult(number);
    PostMessageA(FindWindowA("KestraToVilnor", nullptr), kNewCaseAnswer, kPatient, 0);
    AwaitResult(number);
  }

  void MakeWithLinkProgram(int number) {
    long patient = kPatient;
    long practitioner = 12;
    long company = 3;
    Check(session_->OpenWithNewCase(&patient, &practitioner, &company));
    AwaitResult(number);
  }

 private:
  void PutResult(int number) const {
    std::ofstream file(com::Wide(resultFile_).c_str(), std::ios::binary);
    file << "<?xml version='1.0' encoding='ISO-8859-1'?><Result><Cancelled>0</Cancelled>"
            "<Status>"
         << (number % 2 != 0 ? kSent : kWithdrawn)
         << "</Status><UserDefData>4711&amp;12&amp;3</UserDefData><Id>" << kCase
         << "</Id><UserName>anna</UserName></Result>";
  }

  void AwaitResult(int number) const {
    const std::string trip = "round trip " + std::to_string(number);
    Require(sample_host::RunUntilAnswered({kNewCaseAnswer, kPatient}, kBound),
            trip + ": no answer");
    Require(!Exists(resultFile_), trip + ": the result file is still there");
  }

  std::u16string exchange_;
  std::u16string resultFile_;
  ComPtr<_BVilnor> session_;
  Text identity_{u"19850312-1234"};
  Text firstName_{u"Åsa-Märta"};
  Text lastName_{u"Öberg"};
};

void Run(const std::vector<std::u16string>& words) {
  const int count = std::stoi(automation::ToUtf8(words[2]));
  const int starts = std::stoi(automation::ToUtf8(words[3]));
  Text connection(words[0]);
  SHORT language = 1;
  SHORT dbType = 1;
  Check(NewSession()->InitVilnor(connection.Reference(), &language, &dbType));
  CreateEachClass(count);
  RoundTrips trips(words[1]);
  Repeat("trips", count, kWarm, [&](int number) { trips.Make(number); });
  Repeat("starts", starts, kWarmStarts, [&](int number) { trips.MakeWithLinkProgram(number); });
}

}  // namespace

int wmain(int count, wchar_t** words) {
  constexpr int kUsage = 1;
  constexpr int kFailed = 2;
  std::vector<std::u16string> arguments;
  for (int i = 1; i < count; ++i) {
    arguments.push_back(com::FromWide(words[i]));
  }
  if (arguments.size() != 4) {
    return kUsage;
  }
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  try {
    Run(arguments);
  } catch (const std::exception& error) {
    std::printf("failed: %s\n", error.what());
    return kFailed;
  }
  CoUninitialize();
  return 0;
}
