#include "system/com/holding_process.h"

#include <algorithm>
#include <array>
#include <string>

#include "system/com/component.h"

namespace system_tests {
namespace {

constexpr std::string_view kOption = "--hold-session";
constexpr DWORD kPatience = 20'000;

std::string EventName(std::string_view what, DWORD process) {
  return "com_tests " + std::string(what) + " " + std::to_string(process);
}

HANDLE NewEvent(std::string_view what) {
  return CreateEventA(nullptr, TRUE, FALSE, EventName(what, GetCurrentProcessId()).c_str());
}

HANDLE EventOf(std::string_view what, std::string_view process) {
  return OpenEventA(EVENT_ALL_ACCESS, FALSE,
                    EventName(what, static_cast<DWORD>(std::stoul(std::string(process)))).c_str());
}

}  // namespace

HoldingProcess::HoldingProcess() : ready_(NewEvent("ready")), release_(NewEvent("release")) {
  std::array<char, 1024> program{};
  GetModuleFileNameA(nullptr, program.data(), static_cast<DWORD>(program.size()));
  std::string command = "\"" + std::string(program.data()) + "\" " + std::string(kOption) + " " +
                        std::to_string(GetCurrentProcessId());
  STARTUPINFOA start{};
  start.cb = sizeof start;
  CreateProcessA(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                 &process_);
  WaitForSingleObject(ready_, kPatience);
}

HoldingProcess::~HoldingProcess() {
  if (Release() == STILL_ACTIVE) {
    TerminateProcess(process_.hProcess, 1);
  }
  for (HANDLE handle : {ready_, release_, process_.hProcess, process_.hThread}) {
    CloseHandle(handle);
  }
}

HWND HoldingProcess::Window() const {
  HWND window = nullptr;
  while ((window = FindWindowExA(nullptr, window, "KestraToVilnor", nullptr)) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == process_.dwProcessId) {
      break;
    }
  }
  return window;
}

DWORD HoldingProcess::Release() {
  SetEvent(release_);
  WaitForSingleObject(process_.hProcess, kPatience);
  DWORD code = 0;
  GetExitCodeProcess(process_.hProcess, &code);
  return code;
}

bool RanAsHoldingProcess(const std::vector<std::string_view>& arguments) {
  if (arguments.size() != 2 || arguments.front() != kOption) {
    return false;
  }
  CoInitialize(nullptr);
  HANDLE release = EventOf("release", arguments.back());
  auto session = NewBVilnor();
  SetEvent(EventOf("ready", arguments.back()));
  PumpUntil([&] { return WaitForSingleObject(release, 0) == WAIT_OBJECT_0; });
  session = {};
  CoUninitialize();
  return true;
}

}  // namespace system_tests
