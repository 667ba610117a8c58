#include "system/windows/noting_program.h"

#include <fstream>

#include "com/win32.h"

namespace system_tests {
namespace {

constexpr std::wstring_view kNoteTo = L" note-to=";
constexpr std::wstring_view kWaitFor = L" wait-for=";
constexpr DWORD kGoodTime = 20'000;

// The window that the starter requested, "show default" when it requested none.
std::string WindowAskedFor() {
  STARTUPINFOW startup{};
  GetStartupInfoW(&startup);
  const bool asked = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
  return "show " + (asked ? std::to_string(startup.wShowWindow) : std::string("default"));
}

bool EventCame(const std::wstring& arguments) {
  const auto found = arguments.find(kWaitFor);
  if (found == std::wstring::npos) {
    return true;
  }
  const HANDLE event =
      OpenEventW(SYNCHRONIZE, FALSE, arguments.substr(found + kWaitFor.size()).c_str());
  const bool came = event != nullptr && WaitForSingleObject(event, kGoodTime) == WAIT_OBJECT_0;
  CloseHandle(event);
  return came;
}

}  // namespace

std::wstring WaitFor(const std::wstring& event) {
  return std::wstring(kWaitFor) + event;
}

std::wstring NoteTo(const std::filesystem::path& file) {
  return std::wstring(kNoteTo) + file.wstring();
}

bool RanAsNotingProgram() {
  const std::wstring commandLine = GetCommandLineW();
  const auto found = commandLine.find(kNoteTo);
  if (found == std::wstring::npos) {
    return false;
  }
  if (!EventCame(commandLine.substr(0, found))) {
    return true;
  }
  const std::filesystem::path file = commandLine.substr(found + kNoteTo.size());
  // Under another name until complete, for the reader. The tests' paths are ASCII.
  const std::filesystem::path unfinished = file.wstring() + L".unfinished";
  std::ofstream(unfinished, std::ios::binary)
      << std::string(commandLine.begin(), commandLine.end()) << '\n'
      << WindowAskedFor();
  std::filesystem::rename(unfinished, file);
  return true;
}

}  // namespace system_tests
