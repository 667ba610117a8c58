#include "system/com/host_registration.h"

#include <array>
#include <fstream>
#include <iterator>

#include "com/wide_text.h"
#include "system/com/component.h"

namespace system_tests {
namespace {

namespace fs = std::filesystem;

constexpr const wchar_t* kHostKey = L"SOFTWARE\\Kestra\\Kestra.Main.exe";
constexpr const wchar_t* kLinkKey =
    L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe";
constexpr const wchar_t* kNote = L"CommandLine.txt";

void SetPath(const wchar_t* key, const std::wstring& path) {
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, L"Path", REG_SZ, path.c_str(),
                  static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
}

fs::path Program() {
  std::array<wchar_t, 1024> path{};
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return path.data();
}

}  // namespace

HostRegistration::HostRegistration()
    : folder_(fs::temp_directory_path() /
              (L"com_tests" + std::to_wstring(GetCurrentProcessId()) + L"_host")) {
  fs::remove_all(folder_);
  fs::create_directories(ExchangeFolder());
  fs::copy_file(Program(), LinkProgram());
  SetPath(kHostKey, folder_.wstring() + L"\\");
  SetPath(kLinkKey, folder_.wstring());
}

HostRegistration::~HostRegistration() {
  RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kHostKey, L"Path");
  RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kLinkKey, L"Path");
  // The stand-in may still be about to end.
  PumpUntil([&] {
    std::error_code error;
    fs::remove_all(folder_, error);
    return !error;
  });
}

std::wstring HostRegistration::TakeCommandLine() const {
  const fs::path note = folder_ / kNote;
  std::string text;
  PumpUntil([&] {
    std::ifstream file(note, std::ios::binary);
    text.assign(std::istreambuf_iterator<char>(file), {});
    return !text.empty();
  });
  std::error_code ignored;
  fs::remove(note, ignored);
  return {text.begin(), text.end()};
}

bool RanAsLinkProgram() {
  const fs::path program = Program();
  if (program.filename() != L"Link.exe") {
    return false;
  }
  // Under another name until complete, for the reader. The tests' paths are ASCII.
  const std::wstring commandLine = GetCommandLineW();
  const fs::path note = program.parent_path() / kNote;
  const fs::path unfinished = program.parent_path() / L"unfinished";
  std::ofstream(unfinished, std::ios::binary)
      << std::string(commandLine.begin(), commandLine.end());
  fs::rename(unfinished, note);
  return true;
}

}  // namespace system_tests
