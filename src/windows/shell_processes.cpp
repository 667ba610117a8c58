#include "windows/shell_processes.h"

#include "automation/automation_error.h"
#include "com/wide_text.h"
#include "com/win32.h"

namespace windows {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

RuntimeError StartError(DWORD code) {
  return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND
             ? RuntimeError::FileNotFound
             : RuntimeError::InvalidProcedureCall;
}

}  // namespace

void ShellProcesses::Start(const std::u16string& commandLine) {
  if (commandLine.empty()) {
    throw AutomationError(RuntimeError::InvalidProcedureCall);
  }
  // The system writes to the command line while it searches for the program.
  std::wstring buffer = com::Wide(commandLine);
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = SW_SHOWNORMAL;
  PROCESS_INFORMATION process{};
  if (CreateProcessW(nullptr, buffer.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                     &process) == FALSE) {
    throw AutomationError(StartError(GetLastError()));
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

}  // namespace windows
