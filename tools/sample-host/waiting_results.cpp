#include "waiting_results.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "com/com_error.h"
#include "com/wide_text.h"
#include "console.h"

namespace sample_host {
namespace {

// The kinds of results, by the word in their file names.
struct Kind {
  std::wstring_view word;
  HRESULT (STDMETHODCALLTYPE _BVilnor::*read)(long* key);
};
constexpr auto kKinds = std::to_array<Kind>({{L"NewFHP", &_BVilnor::ReadNewFHP},
                                             {L"NewCase", &_BVilnor::ReadNewCase},
                                             {L"ExistCase", &_BVilnor::ReadExistCase}});

struct Waiting {
  std::wstring name;
  // The name by which the component finds it, "OutNewCase4711.xml".
  std::wstring ownName;
  std::uint64_t written = 0;
  const Kind* kind = nullptr;
  long key = 0;
};

[[noreturn]] void RaiseLastError(std::wstring_view what) {
  throw automation::AutomationError(static_cast<std::int32_t>(GetLastError()), u"",
                                    com::FromWide(std::wstring(what)));
}

// A real host knows its own folder; this one reads its registration, from the keys that the
// component reads.
std::wstring ExchangeDirectory() {
  for (const wchar_t* key :
       {L"SOFTWARE\\Kestra\\Kestra.Main.exe",
        L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra.Main.exe",
        L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra32.exe"}) {
    std::array<wchar_t, MAX_PATH> path{};
    DWORD size = sizeof(path);
    if (RegGetValueW(HKEY_LOCAL_MACHINE, key, L"Path", RRF_RT_REG_SZ, nullptr, path.data(),
                     &size) == ERROR_SUCCESS &&
        path.front() != L'\0') {
      return std::wstring(path.data()) + L"Vilnor";
    }
  }
  SetLastError(ERROR_FILE_NOT_FOUND);
  RaiseLastError(L"the host is not registered");
}

class WaitingResults {
 public:
  WaitingResults(_BVilnor& vilnor, std::wstring directory)
      : vilnor_(vilnor), directory_(std::move(directory)) {}

  void ReadAll() {
    std::vector<Waiting> all = List();
    std::stable_sort(all.begin(), all.end(), [](const Waiting& one, const Waiting& other) {
      // At equal times, a result that was set aside is older than one under its own name.
      return std::pair(one.written, one.name == one.ownName) <
             std::pair(other.written, other.name == other.ownName);
    });
    for (Waiting& result : all) {
      std::u16string became = u"not read, an older one still waits";
      if (!stuck_.contains(result.ownName)) {
        try {
          MakeWayFor(result, all);
          became = Read(result);
        } catch (const automation::AutomationError& error) {
          stuck_.insert(result.ownName);
          became = u"not read, " + automation::FromUtf8(error.what());
        }
      }
      Print(u"waiting " + com::FromWide(result.name) + u": " + became);
    }
    if (all.empty()) {
      Print(u"no result waits");
    }
  }

 private:
  static std::optional<Waiting> Parse(const WIN32_FIND_DATAW& file) {
    static const std::wregex pattern(L"Out(NewFHP|NewCase|ExistCase)(-?[0-9]{1,10})( .*)?\\.xml",
                                     std::regex::icase);
    const std::wstring name = file.cFileName;
    std::wsmatch parts;
    if ((file.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ||
        !std::regex_match(name, parts, pattern)) {
      return std::nullopt;
    }
    // Only keys as the component writes them: not "007" or 2147483648.
    const long long key = std::wcstoll(parts.str(2).c_str(), nullptr, 10);
    if (key != static_cast<long>(key) || std::to_wstring(key) != parts.str(2)) {
      return std::nullopt;
    }
    const auto kind = std::find_if(kKinds.begin(), kKinds.end(), [&](const Kind& each) {
      return _wcsicmp(each.word.data(), parts.str(1).c_str()) == 0;
    });
    return Waiting{.name = name,
                   .ownName = L"Out" + parts.str(1) + parts.str(2) + L".xml",
                   .written = (std::uint64_t{file.ftLastWriteTime.dwHighDateTime} << 32) |
                              file.ftLastWriteTime.dwLowDateTime,
                   .kind = kind,
                   .key = static_cast<long>(key)};
  }

  std::vector<Waiting> List() const {
    std::vector<Waiting> all;
    WIN32_FIND_DATAW file{};
    const HANDLE search = FindFirstFileW((directory_ + L"\\Out*.xml").c_str(), &file);
    if (search == INVALID_HANDLE_VALUE) {
      // Before the first request the directory does not exist.
      if (GetLastError() != ERROR_FILE_NOT_FOUND && GetLastError() != ERROR_PATH_NOT_FOUND) {
        RaiseLastError(directory_);
      }
      return all;
    }
    do {
      if (auto result = Parse(file)) {
        all.push_back(std::move(*result));
      }
    } while (FindNextFileW(search, &file) != FALSE);
    const DWORD end = GetLastError();
    FindClose(search);
    if (end != ERROR_NO_MORE_FILES) {
      SetLastError(end);
      RaiseLastError(directory_);
    }
    return all;
  }

  bool Exists(const std::wstring& name) const {
    return GetFileAttributesW((directory_ + L"\\" + name).c_str()) != INVALID_FILE_ATTRIBUTES;
  }

  // Never replaces another file.
  void Rename(const std::wstring& from, const std::wstring& to) const {
    if (MoveFileW((directory_ + L"\\" + from).c_str(), (directory_ + L"\\" + to).c_str()) ==
        FALSE) {
      RaiseLastError(from);
    }
  }

  // A name like those that the component gives to results that it sets aside.
  std::wstring FreeName(const Waiting& result) const {
    const std::wstring stem = result.ownName.substr(0, result.ownName.size() - 4) + L" waiting ";
    int number = 1;
    while (Exists(stem + std::to_wstring(number) + L".xml")) {
      ++number;
    }
    return stem + std::to_wstring(number) + L".xml";
  }

  // Gives the result its own name. A newer result of that name is renamed for the time being.
  void MakeWayFor(Waiting& result, std::vector<Waiting>& all) {
    if (result.name == result.ownName) {
      return;
    }
    if (Exists(result.ownName)) {
      const std::wstring aside = FreeName(result);
      Rename(result.ownName, aside);
      for (Waiting& other : all) {
        if (_wcsicmp(other.name.c_str(), result.ownName.c_str()) == 0) {
          other.name = aside;
        }
      }
    }
    Rename(result.name, result.ownName);
  }

  // Reads a result and returns what became of it. A newer answer may arrive meanwhile; it has its
  // own message.
  std::u16string Read(const Waiting& result) {
    const std::vector<Waiting> before = List();
    key_ = result.key;
    com::Check((vilnor_.*result.kind->read)(&key_));
    const std::vector<Waiting> now = List();
    const auto still = std::find_if(now.begin(), now.end(), [&](const Waiting& each) {
      return each.name == result.ownName && each.written == result.written;
    });
    if (still != now.end()) {
      if (result.name != result.ownName) {
        Rename(result.ownName, result.name);
      }
      return u"left as it is";
    }
    if (const auto aside = NewOf(result, now, before)) {
      stuck_.insert(result.ownName);
      return u"set aside again as " + com::FromWide(*aside);
    }
    return u"dealt with";
  }

  static std::optional<std::wstring> NewOf(const Waiting& result, const std::vector<Waiting>& now,
                                           const std::vector<Waiting>& before) {
    const auto added = std::find_if(now.begin(), now.end(), [&](const Waiting& each) {
      return each.ownName == result.ownName && each.name != each.ownName &&
             std::none_of(before.begin(), before.end(),
                          [&](const Waiting& old) { return old.name == each.name; });
    });
    return added == now.end() ? std::nullopt : std::optional(added->name);
  }

  _BVilnor& vilnor_;
  std::wstring directory_;
  long key_ = 0;
  // Own names of results that still wait: newer ones must not be entered before them.
  std::set<std::wstring> stuck_;
};

}  // namespace

void ReadWaitingResults(_BVilnor& vilnor) {
  WaitingResults(vilnor, ExchangeDirectory()).ReadAll();
}

}  // namespace sample_host
