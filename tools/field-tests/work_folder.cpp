#include "field-tests/work_folder.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <sstream>

#include "field-tests/console.h"
#include "field-tests/core/text.h"
#include "field-tests/private_folder.h"
#include "field-tests/trace_check.h"
#include "field-tests/wide.h"

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
    if (IsPlain(text.data()) && MakePrivateFolder(folder) &&
        (fs::create_directories(folder / "temp", error), !error)) {
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

// "user S-1-5-...", the note's first line: its keys are this user's.
std::string UserLine() {
  return "user " + Utf8(ThisUser());
}

std::string TextOf(const fs::path& note) {
  const std::ifstream file(note, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  if (!file.is_open() || text.bad()) {
    throw CannotWork("An earlier run was ended, and its note of the registry, " +
                     Utf8(note.wstring()) + ", cannot be read. Nothing was changed.");
  }
  return text.str();
}

RegistryState Remembered(const fs::path& note) {
  const std::string text = TextOf(note);
  const auto lines = LinesOf(text);
  if (!lines.empty() && lines.back() == "end" && lines.front() != UserLine()) {
    throw CannotWork(
        "An earlier run was ended. Start run.cmd as the user who started it first: only that user "
        "can put the registry back.");
  }
  return RegistryState::FromText(text);
}

// On the disk before anything is changed: the computer may be switched off.
void Write(const fs::path& note, const RegistryState& before) {
  const std::string text = UserLine() + "\n" + before.Text();
  const Handle file = Owned(CreateFileW(note.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  if (!file ||
      WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) ==
          FALSE ||
      written != text.size() || FlushFileBuffers(file.get()) == FALSE) {
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
  EndTraceSession();
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
