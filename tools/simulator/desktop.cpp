#include "simulator/desktop.h"

#include <memory>

#include "automation/automation_error.h"
#include "automation/date.h"
#include "automation/text.h"
#include "com/wide_text.h"
#include "com/win32.h"
#include "windows/system_clock.h"

namespace simulator {
namespace {

struct CloseFile {
  using pointer = HANDLE;
  void operator()(HANDLE file) const { CloseHandle(file); }
};

void WriteAll(HANDLE file, const std::string& bytes) {
  DWORD written = 0;
  // Failure to write the log is ignored.
  WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace

bool Desktop::Post(const Notification& notification) {
  HWND window = FindWindowW(com::Wide(notification.className).c_str(), nullptr);
  return window != nullptr && PostMessageW(window, notification.message,
                                           static_cast<WPARAM>(notification.wParam), 0) != FALSE;
}

void Desktop::Pause(std::chrono::milliseconds time) {
  Sleep(static_cast<DWORD>(time.count()));
}

void Desktop::Copy(const std::u16string& from, const std::u16string& to) {
  if (CopyFileW(com::Wide(from).c_str(), com::Wide(to).c_str(), FALSE) == FALSE) {
    throw automation::AutomationError(GetLastError() == ERROR_FILE_NOT_FOUND
                                          ? automation::RuntimeError::FileNotFound
                                          : automation::RuntimeError::PathFileAccess);
  }
}

void Desktop::Log(const std::u16string& line) {
  const auto now = windows::SystemClock().Now();
  const auto stamped = automation::FormatDate(now, u"yyyy-mm-dd ") + automation::FormatTime(now) +
                       u" " + line + u"\r\n";
  const std::string bytes = automation::ToUtf8(stamped);
  HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
  if (errors != nullptr && errors != INVALID_HANDLE_VALUE) {
    WriteAll(errors, bytes);
  }
  if (logFile_.empty()) {
    return;
  }
  const std::unique_ptr<HANDLE, CloseFile> file(
      CreateFileW(com::Wide(logFile_).c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr,
                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (file.get() != INVALID_HANDLE_VALUE) {
    WriteAll(file.get(), bytes);
  }
}

}  // namespace simulator
