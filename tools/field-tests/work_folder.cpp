#include "field-tests/work_folder.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>

#include "field-tests/console.h"
#include "field-tests/core/text.h"
#include "field-tests/wide.h"
// Need win32.h in front of them.
#include <aclapi.h>
#include <sddl.h>

namespace field_tests {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kName = L"VilnorFieldTests";
constexpr const wchar_t* kNote = L"registry before.txt";

// The tests' own paths may have neither blanks nor Swedish letters, nor the user's name.
bool IsPlain(const std::wstring& path) {
  return !path.empty() && std::all_of(path.begin(), path.end(), [](wchar_t letter) {
    return letter > L' ' && letter < 0x7F;
  });
}

fs::path NewFolder() {
  for (const wchar_t* const variable : {L"PUBLIC", L"ProgramData", L"TEMP"}) {
    std::array<wchar_t, 1024> text{};
    GetEnvironmentVariableW(variable, text.data(), text.size());
    std::error_code error;
    fs::path folder = fs::path(text.data()) / kName;
    if (IsPlain(text.data()) && (fs::create_directories(folder / "temp", error), !error)) {
      return folder;
    }
  }
  throw CannotWork(
      "No folder for temporary files can be created in %PUBLIC%, %ProgramData% or "
      "%TEMP%.");
}

Handle TheOnlyRun() {
  Handle mutex(CreateMutexW(nullptr, FALSE, kName));
  if (GetLastError() == ERROR_ALREADY_EXISTS) {
    throw CannotWork("The field tests are already running on this computer.");
  }
  return mutex;
}

using Sid = std::array<std::byte, SECURITY_MAX_SID_SIZE>;

Sid ThisUser() {
  HANDLE opened = nullptr;
  OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &opened);
  const Handle token(opened);
  alignas(TOKEN_USER) std::array<std::byte, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
  DWORD size = 0;
  Sid sid{};
  if (GetTokenInformation(token.get(), TokenUser, user.data(), user.size(), &size) == FALSE ||
      CopySid(sid.size(), sid.data(), reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid) ==
          FALSE) {
    throw CannotWork("Windows does not tell which user this is.");
  }
  return sid;
}

// "user S-1-5-...", the note's first line: its keys are this user's.
std::string UserLine() {
  wchar_t* text = nullptr;
  ConvertSidToStringSidW(ThisUser().data(), &text);
  std::string line = "user " + (text == nullptr ? "" : Utf8(text));
  LocalFree(text);
  return line;
}

// By this user or an administrator: every user can write into the folder.
bool IsWrittenByATrustedUser(HANDLE file) {
  PSID owner = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  const bool isKnown = GetSecurityInfo(file, SE_FILE_OBJECT, OWNER_SECURITY_INFORMATION, &owner,
                                       nullptr, nullptr, nullptr, &descriptor) == ERROR_SUCCESS;
  const bool isTrusted = isKnown && (EqualSid(owner, ThisUser().data()) != FALSE ||
                                     IsWellKnownSid(owner, WinBuiltinAdministratorsSid) != FALSE);
  LocalFree(descriptor);
  return isTrusted;
}

// None if it cannot be read or is somebody else's.
std::optional<std::string> TrustedText(const fs::path& note) {
  const Handle file = Owned(CreateFileW(note.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                        OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file || !IsWrittenByATrustedUser(file.get())) {
    return std::nullopt;
  }
  std::string text(GetFileSize(file.get(), nullptr), '\0');
  DWORD read = 0;
  ReadFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &read, nullptr);
  text.resize(read);
  return text;
}

RegistryState Remembered(const fs::path& note) {
  const auto text = TrustedText(note);
  const auto lines = LinesOf(text.value_or(""));
  const bool isAnothers =
      !text || (!lines.empty() && lines.back() == "end" && lines.front() != UserLine());
  if (isAnothers) {
    throw CannotWork(
        "An earlier run was ended. Start run.cmd as the user who started it first: only that user "
        "can put the registry back.");
  }
  return RegistryState::FromText(*text);
}

void Write(const fs::path& note, const RegistryState& before) {
  std::ofstream file(note, std::ios::binary);
  file << UserLine() << "\n" << before.Text();
  file.close();
  if (!file) {
    throw CannotWork("The file " + Utf8(note.wstring()) + " cannot be written.");
  }
}

std::set<fs::path> RequestsInRoot(const fs::path& path) {
  std::set<fs::path> found;
  std::error_code unreadable;
  for (const auto& file : fs::directory_iterator(path.root_path(), unreadable)) {
    const auto name = file.path().filename().wstring();
    if (name.ends_with(L".xml") && (name.starts_with(L"In") || name.starts_with(L"Search"))) {
      found.insert(file.path());
    }
  }
  return found;
}

}  // namespace

WorkFolder::WorkFolder()
    : onlyOne_(TheOnlyRun()), before_(RegistryState::Now()), path_(NewFolder()) {
  if (fs::exists(path_ / kNote)) {
    const bool done = Remembered(path_ / kNote).PutBack();
    PrintLine(done ? "An earlier run was ended. What it left in the registry has been put back."
                   : "An earlier run was ended. What it left in the registry cannot be put back "
                     "without administrator rights.");
    if (!done) {
      throw CannotWork("Start run.cmd as administrator.");
    }
  }
  before_ = RegistryState::Now();
  rootBefore_ = RequestsInRoot(path_);
  Write(path_ / kNote, before_);
  const std::wstring temporary = (path_ / "temp").wstring();
  SetEnvironmentVariableW(L"TEMP", temporary.c_str());
  SetEnvironmentVariableW(L"TMP", temporary.c_str());
  SetCurrentDirectoryW(path_.c_str());
}

bool WorkFolder::PutBackRegistry() const {
  try {
    return before_.PutBack() && before_ == RegistryState::Now();
  } catch (const CannotWork& unreadable) {
    PrintLine(unreadable.what());
    return false;
  }
}

bool WorkFolder::Remove() const {
  SetCurrentDirectoryW(path_.parent_path().c_str());
  for (const auto& file : RequestsInRoot(path_)) {
    if (!rootBefore_.contains(file)) {
      DeleteFileW(file.c_str());
    }
  }
  // A program that has just ended may still have a file open.
  for (int tries = 0; tries < 50; ++tries) {
    std::error_code error;
    fs::remove_all(path_, error);
    if (!error) {
      return true;
    }
    Sleep(100);
  }
  return false;
}

}  // namespace field_tests
