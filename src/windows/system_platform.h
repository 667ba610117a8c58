// The real platform: the Windows adapters of all ports in one object.
#pragma once

#include "platform/platform.h"
#include "windows/ado_database.h"
#include "windows/advapi_registry.h"
#include "windows/etw_trace.h"
#include "windows/message_boxes.h"
#include "windows/msxml_documents.h"
#include "windows/registry_user_settings.h"
#include "windows/shell_processes.h"
#include "windows/system_clock.h"
#include "windows/user32_windows.h"
#include "windows/user_locale.h"
#include "windows/win32_files.h"

namespace windows {

// The adapters keep nothing of a call, so one object serves all threads.
class SystemPlatform {
 public:
  SystemPlatform() = default;
  SystemPlatform(const SystemPlatform&) = delete;
  SystemPlatform& operator=(const SystemPlatform&) = delete;

  platform::Platform& platform() { return platform_; }

 private:
  SystemClock clock_;
  UserLocale locale_;
  MessageBoxes dialogs_;
  ShellProcesses processes_;
  Win32Files files_;
  RegistryUserSettings userSettings_;
  AdvapiRegistry registry_;
  AdoDatabase database_;
  MsxmlDocuments resultDocuments_;
  User32Windows windows_;
  EtwTrace trace_;
  platform::Platform platform_{.clock = clock_,
                               .locale = locale_,
                               .dialogs = dialogs_,
                               .processes = processes_,
                               .files = files_,
                               .userSettings = userSettings_,
                               .registry = registry_,
                               .database = database_,
                               .resultDocuments = resultDocuments_,
                               .windows = windows_,
                               .trace = trace_};
};

}  // namespace windows
