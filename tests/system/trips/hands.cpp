// TripHands.exe: what the full round trips need done in Windows besides the host.
//   TripHands press TITLE CONTROL [CONTROL=TEXT]...
//       waits for the window with that title, types the texts and presses the button
//   TripHands hold none|read FILE READY RELEASE
//       keeps FILE open, letting others do nothing or read, from the moment in which READY appears
//       until RELEASE exists
//   TripHands restrict KEY, TripHands release KEY
//       lets everybody only read KEY, a key of the local machine; gives all rights back
//   TripHands listen CLASS READY RELEASE
//       has a window of that class from the moment in which READY appears until RELEASE exists
//   TripHands hide KEY
//       as restrict, but nobody can read it, either
//   TripHands clipboard
//       prints the clipboard's text
// Exit code: 0 done, 1 wrong command line, 2 what was waited for did not come.
#include <memory>
#include <string>
#include <vector>

#include "automation/text.h"
#include "com/wide_text.h"
#include "com/win32.h"
// Needs win32.h in front of it.
#include <sddl.h>

namespace {

constexpr DWORD kLook = 50;           // milliseconds between two looks
constexpr ULONGLONG kBound = 60'000;  // milliseconds to wait for anything

enum ExitCode : int { kDone = 0, kUsage = 1, kNotThere = 2 };

struct CloseFile {
  using pointer = HANDLE;
  void operator()(HANDLE file) const { CloseHandle(file); }
};
using File = std::unique_ptr<HANDLE, CloseFile>;

// Runs `condition` until it is true; false when that took too long.
template <class Condition>
bool WaitUntil(Condition&& condition) {
  const ULONGLONG end = GetTickCount64() + kBound;
  while (!condition()) {
    if (GetTickCount64() > end) {
      return false;
    }
    Sleep(kLook);
  }
  return true;
}

bool Exists(const std::wstring& file) {
  return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

int Press(const std::vector<std::wstring>& words) {
  HWND window = nullptr;
  const int button = std::stoi(words[1]);
  const auto ready = [&] {
    window = FindWindowW(nullptr, words[0].c_str());
    return window != nullptr && IsWindowVisible(window) != FALSE &&
           GetDlgItem(window, button) != nullptr;
  };
  if (!WaitUntil(ready)) {
    return kNotThere;
  }
  for (std::size_t i = 2; i < words.size(); ++i) {
    const auto split = words[i].find(L'=');
    HWND control = GetDlgItem(window, std::stoi(words[i].substr(0, split)));
    SendMessageW(control, WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(words[i].substr(split + 1).c_str()));
  }
  PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button),
               reinterpret_cast<LPARAM>(GetDlgItem(window, button)));
  return kDone;
}

File OpenFile(const std::wstring& name, DWORD access, DWORD sharing, DWORD disposition) {
  HANDLE file = CreateFileW(name.c_str(), access, sharing, nullptr, disposition,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  return File(file == INVALID_HANDLE_VALUE ? nullptr : file);
}

int Hold(const std::vector<std::wstring>& words) {
  const DWORD sharing = words[0] == L"read" ? FILE_SHARE_READ : 0;
  const File held = OpenFile(words[1], GENERIC_READ, sharing, OPEN_EXISTING);
  if (!held || !OpenFile(words[2], GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS)) {
    return kNotThere;
  }
  return WaitUntil([&] { return Exists(words[3]); }) ? kDone : kNotThere;
}

int Protect(const std::wstring& path, const wchar_t* accessList) {
  HKEY key = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const bool done =
      RegOpenKeyExW(HKEY_LOCAL_MACHINE, path.c_str(), 0, WRITE_DAC, &key) == ERROR_SUCCESS &&
      ConvertStringSecurityDescriptorToSecurityDescriptorW(accessList, SDDL_REVISION_1, &descriptor,
                                                           nullptr) != FALSE &&
      RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, descriptor) == ERROR_SUCCESS;
  LocalFree(descriptor);
  RegCloseKey(key);
  return done ? kDone : kNotThere;
}

int Listen(const std::vector<std::wstring>& words) {
  WNDCLASSW described{};
  described.lpfnWndProc = DefWindowProcW;
  described.lpszClassName = words[0].c_str();
  RegisterClassW(&described);
  HWND window =
      CreateWindowExW(0, words[0].c_str(), L"", 0, 0, 0, 0, 0, nullptr, nullptr, nullptr, nullptr);
  if (window == nullptr || !OpenFile(words[1], GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS)) {
    return kNotThere;
  }
  return WaitUntil([&] { return Exists(words[2]); }) ? kDone : kNotThere;
}

void Print(const std::string& bytes) {
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), bytes.data(), static_cast<DWORD>(bytes.size()),
            &written, nullptr);
}

int PrintClipboard() {
  if (OpenClipboard(nullptr) == FALSE) {
    return kNotThere;
  }
  HANDLE data = GetClipboardData(CF_UNICODETEXT);
  const auto* const text =
      static_cast<const wchar_t*>(data == nullptr ? nullptr : GlobalLock(data));
  if (text == nullptr) {
    return kNotThere;
  }
  Print(automation::ToUtf8(com::FromWide(text)));
  CloseClipboard();
  return kDone;
}

}  // namespace

int wmain(int count, wchar_t** words) {
  std::vector<std::wstring> arguments(words + 1, words + count);
  const std::wstring task = arguments.empty() ? L"" : arguments.front();
  if (task == L"press" && arguments.size() >= 3) {
    return Press({arguments.begin() + 1, arguments.end()});
  }
  if (task == L"hold" && arguments.size() == 5) {
    return Hold({arguments.begin() + 1, arguments.end()});
  }
  if (task == L"restrict" && arguments.size() == 2) {
    return Protect(arguments[1], L"D:P(A;;KR;;;WD)(A;;WD;;;WD)");
  }
  if (task == L"hide" && arguments.size() == 2) {
    return Protect(arguments[1], L"D:P(A;;WD;;;WD)");
  }
  if (task == L"release" && arguments.size() == 2) {
    return Protect(arguments[1], L"D:(A;;KA;;;WD)");
  }
  if (task == L"listen" && arguments.size() == 4) {
    return Listen({arguments.begin() + 1, arguments.end()});
  }
  if (task == L"clipboard" && arguments.size() == 1) {
    return PrintClipboard();
  }
  std::wstring told = L"not understood:";
  for (const auto& word : arguments) {
    told.append(L" ").append(word);
  }
  Print(automation::ToUtf8(com::FromWide(told + L"\n")));
  return kUsage;
}
