// A host of Vilnor in one file. It needs Vilnor.h, which is beside it, and the Windows SDK.
//   vilnor_sample CONNECTION DBTYPE FOLDER PID BID RID FHPID
// README.md explains the arguments and how to build it.

#ifdef _WIN64
#error "Build this program as 32-bit: Vilnor.dll is, and a 64-bit process cannot load it."
#endif

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <initguid.h>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "Vilnor.h"

namespace {

// Vilnor Link answers a new case with this message, to a hidden window that Vilnor makes.
constexpr UINT kNewCaseAnswer = 10002;
constexpr std::wstring_view kVilnorWindow = L"KestraToVilnor";

enum ExitCode { kDone = 0, kUsage = 1, kNoComponent = 3, kNoDatabase = 4, kCallFailed = 5 };

std::string Utf8(const std::wstring& text) {
  std::string bytes(text.size() * 3, '\0');
  const int length =
      WideCharToMultiByte(CP_UTF8, 0, text.c_str(), static_cast<int>(text.size()), bytes.data(),
                          static_cast<int>(bytes.size()), nullptr, nullptr);
  bytes.resize(static_cast<std::size_t>(length));
  return bytes;
}

void Print(const std::wstring& line) {
  std::printf("%s\n", Utf8(line).c_str());
  std::fflush(stdout);
}

int Fail(ExitCode code, std::string line) {
  // A driver's text may have several lines.
  std::replace_if(
      line.begin(), line.end(), [](char letter) { return letter < ' ' && letter >= 0; }, ' ');
  std::fprintf(stderr, "vilnor_sample: %s\n", line.c_str());
  return code;
}

// The error that a call has just left on this thread.
std::string ErrorText(HRESULT result) {
  std::array<char, 16> code{};
  std::snprintf(code.data(), code.size(), "0x%08lX", static_cast<unsigned long>(result));
  IErrorInfo* error = nullptr;
  BSTR text = nullptr;
  if (GetErrorInfo(0, &error) == S_OK) {
    error->GetDescription(&text);
    error->Release();
  }
  const std::wstring description(text, SysStringLen(text));
  SysFreeString(text);
  return code.data() + (description.empty() ? "" : " " + Utf8(description));
}

void Check(HRESULT result) {
  if (FAILED(result)) {
    throw std::runtime_error(ErrorText(result));
  }
}

// --- Events. Vilnor raises them on this thread, before the call that causes them returns.

class JournalSink : public IDispatch {
 public:
  explicit JournalSink(_BVilnor& vilnor) {
    IConnectionPointContainer* container = nullptr;
    Check(
        vilnor.QueryInterface(IID_IConnectionPointContainer, reinterpret_cast<void**>(&container)));
    const HRESULT result = container->FindConnectionPoint(DIID___BVilnor, &point_);
    container->Release();
    Check(result);
    Check(point_->Advise(this, &cookie_));
  }
  JournalSink(const JournalSink&) = delete;
  JournalSink& operator=(const JournalSink&) = delete;
  virtual ~JournalSink() {
    point_->Unadvise(cookie_);
    point_->Release();
  }

  STDMETHODIMP QueryInterface(REFIID interfaceId, void** object) override {
    const bool known = IsEqualIID(interfaceId, IID_IUnknown) ||
                       IsEqualIID(interfaceId, IID_IDispatch) ||
                       IsEqualIID(interfaceId, DIID___BVilnor);
    *object = known ? static_cast<IDispatch*>(this) : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  // It is a plain object; Vilnor's references do not keep it alive.
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    constexpr DISPID kUpdateJournal = 2;
    if (id == kUpdateJournal) {
      Print(L"Event UpdateJournal: a host shows its journal again.");
    }
    return S_OK;
  }

 private:
  IConnectionPoint* point_ = nullptr;
  DWORD cookie_ = 0;
};

// --- Results that nobody read, for example because the host was closed before the answer came.

struct Result {
  std::wstring name;     // "OutNewCase4711 2026-11-16 14.05.00.xml": Vilnor has set it aside
  std::wstring ownName;  // "OutNewCase4711.xml": the name that Vilnor reads
  std::wstring kind;     // "NewCase"
  long key = 0;
  ULONGLONG written = 0;
};

bool IsResult(const WIN32_FIND_DATAW& file, Result& result) {
  result.name = file.cFileName;
  result.written =
      (ULONGLONG{file.ftLastWriteTime.dwHighDateTime} << 32) | file.ftLastWriteTime.dwLowDateTime;
  for (const wchar_t* kind : {L"NewFHP", L"NewCase", L"ExistCase"}) {
    const std::wstring start = std::wstring(L"Out") + kind;
    if (result.name.compare(0, start.size(), start) == 0) {
      result.kind = kind;
      result.key = std::wcstol(result.name.c_str() + start.size(), nullptr, 10);
      const std::wstring own = start + std::to_wstring(result.key);
      result.ownName = own + L".xml";
      // Anything else after the key's digits is no name of Vilnor's.
      return result.name == result.ownName ||
             result.name.compare(0, own.size() + 1, own + L" ") == 0;
    }
  }
  return false;
}

class WaitingResults {
 public:
  WaitingResults(_BVilnor& vilnor, std::wstring folder)
      : vilnor_(vilnor), folder_(std::move(folder)) {}

  // Reads them, the oldest first. Deletes and overwrites nothing, so it may be interrupted at any
  // moment. Call it at the start and when the database is back, while no request is open.
  void ReadAll() {
    Result result;
    while (FindOldest(result)) {
      const int before = Count(result.ownName);
      if (GiveOwnName(result)) {
        Read(result);
      }
      const bool stays = Count(result.ownName) >= before;
      if (stays) {
        // Those with the same key that are newer must not be read before it.
        stuck_.insert(result.ownName);
      }
      Print(result.name + (stays ? L" stays: a person must look at it" : L" is dealt with"));
    }
  }

 private:
  template <class Action>
  void ForEach(Action action) const {
    WIN32_FIND_DATAW file;
    const HANDLE search = FindFirstFileW(Path(L"Out*.xml").c_str(), &file);
    if (search == INVALID_HANDLE_VALUE) {
      return;  // before the first request there is no such folder
    }
    do {
      Result result;
      if (IsResult(file, result)) {
        action(result);
      }
    } while (FindNextFileW(search, &file) != FALSE);
    FindClose(search);
  }

  // Of two results with the same time, the one that was set aside is older.
  bool FindOldest(Result& oldest) const {
    bool found = false;
    ForEach([&](const Result& each) {
      const bool isOlder = !found || each.written < oldest.written ||
                           (each.written == oldest.written && each.name != each.ownName);
      if (isOlder && stuck_.count(each.ownName) == 0) {
        oldest = each;
        found = true;
      }
    });
    return found;
  }

  int Count(const std::wstring& ownName) const {
    int count = 0;
    ForEach([&](const Result& each) { count += each.ownName == ownName ? 1 : 0; });
    return count;
  }

  // A newer result of that name is renamed for the time being. False if a file cannot be renamed.
  bool GiveOwnName(const Result& result) const {
    const std::wstring own = Path(result.ownName);
    if (result.name == result.ownName) {
      return true;
    }
    if (Exists(own)) {
      std::wstring aside;
      for (int i = 1; aside.empty() || Exists(aside); ++i) {
        aside = own.substr(0, own.size() - 4) + L" waiting " + std::to_wstring(i) + L".xml";
      }
      if (MoveFileW(own.c_str(), aside.c_str()) == FALSE) {
        return false;
      }
    }
    return MoveFileW(Path(result.name).c_str(), own.c_str()) != FALSE;
  }

  void Read(const Result& result) const {
    long key = result.key;
    if (result.kind == L"NewFHP") {
      Check(vilnor_.ReadNewFHP(&key));
    } else if (result.kind == L"NewCase") {
      Check(vilnor_.ReadNewCase(&key));
    } else {
      Check(vilnor_.ReadExistCase(&key));
    }
  }

  std::wstring Path(const std::wstring& name) const { return folder_ + L"\\" + name; }

  static bool Exists(const std::wstring& file) {
    return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  _BVilnor& vilnor_;
  const std::wstring folder_;
  std::set<std::wstring> stuck_;
};

// --- The session.

template <class Interface>
HRESULT Create(REFCLSID classId, REFIID interfaceId, Interface*& object) {
  return CoCreateInstance(classId, nullptr, CLSCTX_INPROC_SERVER, interfaceId,
                          reinterpret_cast<void**>(&object));
}

void Init(_BVilnor& vilnor, const wchar_t* connection, short dbType) {
  BSTR connectionParameter = SysAllocString(connection);
  short kestraLangID = 1;
  const HRESULT result = vilnor.InitVilnor(&connectionParameter, &kestraLangID, &dbType);
  SysFreeString(connectionParameter);
  Check(result);
}

// Vilnor reports a failing database in message boxes. Only a DBVilnor returns the error, when it is
// created; so a host that creates one first can tell the user in its own words. It must release it,
// because it keeps the database open.
HRESULT TryDatabase() {
  _DBVilnor* database = nullptr;
  const HRESULT result = Create(CLSID_DBVilnor, IID__DBVilnor, database);
  if (SUCCEEDED(result)) {
    database->Release();
  }
  return result;
}

void AskWhetherItFits(_BVilnor& vilnor, long fhpId) {
  short errCode = 0;
  BSTR errMsg = nullptr;
  VARIANT_BOOL fits = VARIANT_FALSE;
  const HRESULT result = vilnor.OKToSend(&fhpId, &errCode, &errMsg, &fits);
  const std::wstring message(errMsg, SysStringLen(errMsg));
  SysFreeString(errMsg);
  Check(result);
  Print(L"OKToSend " + std::to_wstring(fhpId) +
        (fits != VARIANT_FALSE ? L": yes" : L": no, " + std::to_wstring(errCode) + L" " + message));
}

// A host with windows has such a loop already and needs nothing more. This program ends when the
// answer has been read; it also ends with Ctrl+C, because the user may never answer.
void RunUntilAnswered(long pid) {
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    std::array<wchar_t, 32> window{};
    GetClassNameW(message.hwnd, window.data(), static_cast<int>(window.size()));
    TranslateMessage(&message);
    DispatchMessageW(&message);  // in here Vilnor reads the result and changes the database
    if (message.message == kNewCaseAnswer && static_cast<long>(message.wParam) == pid &&
        kVilnorWindow == window.data()) {
      return;
    }
  }
}

int Play(_BVilnor& vilnor, wchar_t** words) {
  const JournalSink sink(vilnor);
  Init(vilnor, words[1], static_cast<short>(std::wcstol(words[2], nullptr, 10)));
  Print(L"Vilnor is ready.");
  const HRESULT opened = TryDatabase();
  if (FAILED(opened)) {
    return Fail(kNoDatabase,
                "the database cannot be opened; check the connection string: " + ErrorText(opened));
  }
  WaitingResults(vilnor, words[3]).ReadAll();
  AskWhetherItFits(vilnor, std::wcstol(words[7], nullptr, 10));
  long pid = std::wcstol(words[4], nullptr, 10);
  long bid = std::wcstol(words[5], nullptr, 10);
  long rid = std::wcstol(words[6], nullptr, 10);
  Check(vilnor.OpenWithNewCase(&pid, &bid, &rid));
  Print(L"A new case for patient " + std::to_wstring(pid) +
        L": waiting for Vilnor Link's answer (Ctrl+C ends this sample).");
  RunUntilAnswered(pid);
  Print(L"The answer has been read: a host shows its journal again.");
  return kDone;
}

int Run(wchar_t** words) {
  _BVilnor* vilnor = nullptr;
  const HRESULT created = Create(CLSID_BVilnor, IID__BVilnor, vilnor);
  if (FAILED(created)) {
    return Fail(kNoComponent,
                "Vilnor.dll is not registered on this computer; an administrator installs "
                "Vilnor-1.5.N.msi: " +
                    ErrorText(created));
  }
  int code = kCallFailed;
  try {
    code = Play(*vilnor, words);
  } catch (const std::exception& error) {
    Fail(kCallFailed, std::string("a call failed: ") + error.what());
  }
  vilnor->Release();
  Print(L"Vilnor is released.");
  return code;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  if (count != 8) {
    return Fail(kUsage, "usage: vilnor_sample CONNECTION DBTYPE FOLDER PID BID RID FHPID");
  }
  SetConsoleOutputCP(CP_UTF8);
  // Vilnor lives in a single-threaded apartment: the answers arrive as window messages.
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  const int code = Run(words);
  CoUninitialize();
  return code;
}
