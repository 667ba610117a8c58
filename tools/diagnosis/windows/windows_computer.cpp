#include "diagnosis/windows/windows_computer.h"

#include <array>
#include <string>

#include "com/wide_text.h"
#include "com/win32.h"
#include "diagnosis/windows/class_registrations.h"
#include "diagnosis/windows/program_file.h"

namespace diagnosis {
namespace {

constexpr std::size_t kLongestPath = 32768;
// More windows than any desktop has; the search would otherwise follow windows that come and go.
constexpr int kMostWindows = 1000;

// The version of the system whatever this program's manifest says.
OSVERSIONINFOEXW SystemVersion() {
  using Call = LONG(WINAPI*)(OSVERSIONINFOEXW*);
  OSVERSIONINFOEXW version{};
  version.dwOSVersionInfoSize = sizeof version;
  const auto call = reinterpret_cast<Call>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "RtlGetVersion")));
  if (call != nullptr) {
    call(&version);
  }
  return version;
}

int BitsOfWindows() {
  BOOL emulated = FALSE;
  IsWow64Process(GetCurrentProcess(), &emulated);
  return emulated != FALSE || sizeof(void*) == 8 ? 64 : 32;
}

bool MayOpenFolder(const std::wstring& path, DWORD access) {
  HANDLE folder =
      CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                  nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (folder == INVALID_HANDLE_VALUE) {
    return false;
  }
  CloseHandle(folder);
  return true;
}

bool IsFolder(const std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool IsOnNetwork(const std::wstring& path) {
  constexpr std::size_t rootLength = 3;  // "C:\"
  return path.starts_with(L"\\\\") ||
         GetDriveTypeW(path.substr(0, rootLength).c_str()) == DRIVE_REMOTE;
}

std::wstring Variable(const wchar_t* name) {
  std::wstring text(GetEnvironmentVariableW(name, nullptr, 0), L'\0');
  text.resize(GetEnvironmentVariableW(name, text.data(), static_cast<DWORD>(text.size())));
  return text;
}

// Where Windows redirects writes of an old program, for a path on the system's drive.
std::wstring TwinOf(const std::wstring& path) {
  const std::wstring store = Variable(L"LOCALAPPDATA");
  const bool redirected = !store.empty() && path.size() > 2 && path[1] == L':';
  const std::wstring twin = store + L"\\VirtualStore" + (redirected ? path.substr(2) : L"");
  return redirected && IsFolder(twin) ? twin : std::wstring();
}

std::int64_t InTicks(const FILETIME& time) {
  return (static_cast<std::int64_t>(time.dwHighDateTime) << 32) | time.dwLowDateTime;
}

std::int64_t MinutesSince(const FILETIME& time) {
  constexpr std::int64_t ticksOfMinute = 600'000'000;
  FILETIME now{};
  GetSystemTimeAsFileTime(&now);
  return (InTicks(now) - InTicks(time)) / ticksOfMinute;
}

std::u16string ProgramOf(DWORD process) {
  HANDLE handle = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process);
  std::wstring path(kLongestPath, L'\0');
  auto length = static_cast<DWORD>(path.size());
  if (handle == nullptr || QueryFullProcessImageNameW(handle, 0, path.data(), &length) == FALSE) {
    length = 0;
  }
  if (handle != nullptr) {
    CloseHandle(handle);
  }
  path.resize(length);
  return length == 0 ? std::u16string(u"ett program som inte kan undersökas")
                     : com::FromWide(path.substr(path.rfind(L'\\') + 1));
}

}  // namespace

WindowsVersion WindowsComputer::Version() {
  const OSVERSIONINFOEXW version = SystemVersion();
  return {.major = version.dwMajorVersion,
          .minor = version.dwMinorVersion,
          .build = version.dwBuildNumber,
          .server = version.wProductType != VER_NT_WORKSTATION,
          .bits = BitsOfWindows(),
          .processBits = static_cast<int>(sizeof(void*) * 8)};
}

std::vector<ClassRegistration> WindowsComputer::Registrations(
    const std::vector<std::u16string>& hostPrograms) {
  return ClassRegistrations(hostPrograms);
}

ProgramFile WindowsComputer::Examine(const std::u16string& path) {
  return ExamineProgramFile(com::Wide(path));
}

std::u16string WindowsComputer::OwnPath() {
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return com::FromWide(path);
}

FolderFacts WindowsComputer::ExamineFolder(const std::u16string& path) {
  const std::wstring folder = com::Wide(path);
  return {.mayRead = MayOpenFolder(folder, FILE_LIST_DIRECTORY),
          .mayAddFiles = MayOpenFolder(folder, FILE_ADD_FILE),
          .mayAddFolders = MayOpenFolder(folder, FILE_ADD_SUBDIRECTORY),
          .onNetwork = IsOnNetwork(folder),
          .twin = com::FromWide(TwinOf(folder))};
}

std::vector<FolderEntry> WindowsComputer::FilesIn(const std::u16string& folder) {
  std::vector<FolderEntry> entries;
  WIN32_FIND_DATAW found{};
  HANDLE search = FindFirstFileW(com::Wide(folder + u"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    return entries;
  }
  do {
    if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      entries.push_back({com::FromWide(found.cFileName), MinutesSince(found.ftLastWriteTime)});
    }
  } while (FindNextFileW(search, &found) != FALSE);
  FindClose(search);
  return entries;
}

std::vector<Computer::WindowOwner> WindowsComputer::WindowsOfClass(std::u16string_view className) {
  const std::wstring name = com::Wide(className);
  std::vector<WindowOwner> owners;
  HWND window = nullptr;
  for (int count = 0; count < kMostWindows; ++count) {
    window = FindWindowExW(nullptr, window, name.c_str(), nullptr);
    if (window == nullptr) {
      break;
    }
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    owners.push_back({ProgramOf(process), process});
  }
  return owners;
}

}  // namespace diagnosis
