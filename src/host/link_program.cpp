#include "host/link_program.h"

#include <cstdint>

#include "automation/automation_error.h"
#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "platform/processes.h"
#include "platform/trace.h"
#include "platform/user_settings.h"
#include "registry/c_registry.h"
#include "util/error_trap.h"

namespace host {
namespace {

using automation::AutomationError;
using automation::RuntimeError;
using util::UnderTrap;

constexpr std::int32_t kNotRegistered = 10001;

// The per-user setting in which the host keeps the path of Link.exe.
struct Setting {
  std::u16string application = u"KESTRA";
  std::u16string section = u"Environment";
  std::u16string key = u"Vilnor";
};

std::optional<std::u16string> RegisteredLinkProgram() {
  try {
    const std::u16string path = RegisteredPath(kLinkRegistration);
    if (path.empty()) {
      return std::nullopt;
    }
    return path + (path.back() == u'\\' ? u"" : u"\\") + u"Link.exe";
  } catch (...) {
    platform::Note(u"GetVilnorCommandLine", platform::Reason::LinkKeyUnreadable,
                   automation::CurrentErrorNumber());
    return std::nullopt;  // the per-user setting may still name it
  }
}

void TellLinkProgramIsMissing() {
  platform::Current().dialogs.Show(
      {.text = u"Kunde inte hitta Vilnor Link programmet (Link.exe)\r\n\r\n"
               u"Ange sökvägen manuellt under menyalternativet:\r\n"
               u"Verktyg/Inställningar - Denna arbetsplats/Generellt",
       .title = std::u16string(util::kBoxTitle),
       .icon = platform::Icon::Exclamation});
}

std::optional<std::u16string> LinkProgramOfSetting() {
  std::u16string candidate;
  try {
    const Setting setting;
    candidate =
        platform::Current().userSettings.Get(setting.application, setting.section, setting.key);
    if (!candidate.empty()) {
      if (platform::Current().files.FileLength(candidate) != 0) {
        return candidate;
      }
      candidate.clear();
    }
  } catch (...) {
    if (automation::CurrentError().Is(RuntimeError::FileNotFound)) {
      SetVilnorPath({});  // kept: the stale path is still returned
    } else {
      platform::Note(u"GetVilnorCommandLine", platform::Reason::Unreadable,
                     automation::CurrentErrorNumber());
      candidate.clear();
    }
  }
  TellLinkProgramIsMissing();
  return candidate.empty() ? std::nullopt : std::optional(candidate);
}

std::u16string HostRegistration() {
  for (const auto& registration : kHostRegistrations) {
    if (auto path = RegisteredPath(registration); !path.empty()) {
      return path;
    }
  }
  throw AutomationError(kNotRegistered, u"GetVilnorOutputPath",
                        u"Did not find Kestra Dental registry information");
}

}  // namespace

std::u16string RegisteredPath(std::u16string_view keyPath) {
  registry::CRegistry key;
  key.SetRoot(registry::kLocalMachine);
  key.SetKey(std::u16string(keyPath));
  return key.GetValue(std::u16string(kRegisteredValue));
}

std::optional<std::u16string> GetVilnorCommandLine() {
  return UnderTrap(u" in GetVilnorCommandLine", util::kBVilnorIcon, [] {
    auto path = RegisteredLinkProgram();
    return path ? path : LinkProgramOfSetting();
  });
}

util::Attempt<std::u16string> GetVilnorOutputPath() {
  return util::Try(u" in GetVilnorOutputPath", util::kBVilnorIcon, [] {
    // Kept: no separator is inserted, because the host registers its path with a trailing
    // backslash.
    std::u16string directory = HostRegistration() + u"Vilnor";
    auto& files = platform::Current().files;
    if (!files.FolderExists(directory)) {
      files.CreateFolder(directory);
    }
    return directory;
  });
}

void StartVilnor(const std::u16string& exePath, const std::u16string& requestPath) {
  UnderTrap(u" in StartVilnor", util::kBVilnorIcon, [&] {
    // Kept: the program's path is not quoted, even if it contains blanks.
    platform::Current().processes.Start(
        requestPath.empty() ? exePath
                            : exePath + u" path=\"" + requestPath +
                                  u"\" version=2 caller=KestraDental removefiles=1");
  });
}

void SetVilnorPath(const std::u16string& path) {
  UnderTrap(u" in SetVilnorPath", util::kModBVilnorIcon, [&] {
    const Setting setting;
    platform::Current().userSettings.Save(setting.application, setting.section, setting.key, path);
  });
}

}  // namespace host
