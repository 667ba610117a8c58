// Lets the component's own code run without changing anything: its ports are the real ones, but
// what would write is noted instead.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/dialogs.h"
#include "platform/files.h"
#include "platform/platform.h"
#include "platform/processes.h"
#include "platform/registry_api.h"
#include "platform/trace.h"
#include "platform/user_settings.h"
#include "platform/window_system.h"

namespace diagnosis {

// Opens instead of creating. A missing key is taken for a new, empty one if the user may create a
// subkey in its nearest existing ancestor.
class RehearsedRegistry : public platform::RegistryApi {
 public:
  explicit RehearsedRegistry(platform::RegistryApi& real) : real_(real) {}
  // The keys that the component would have created.
  const std::vector<std::u16string>& created() const { return created_; }
  // Paths of missing keys, created or not.
  const std::vector<std::u16string>& missing() const { return missing_; }

  std::int32_t OpenKey(Key parent, const std::u16string& path, std::uint32_t access,
                       Key& opened) override;
  std::int32_t CreateKey(Key parent, const std::u16string& path, std::uint32_t access, Key& opened,
                         std::uint32_t& disposition) override;
  std::int32_t QueryLimits(Key key, Limits& limits) override;
  std::int32_t EnumValue(Key key, std::uint32_t index, const Limits& limits,
                         ValueEntry& entry) override;
  std::int32_t EnumKey(Key key, std::uint32_t index, const Limits& limits,
                       std::u16string& name) override;
  std::int32_t SetTextValue(Key key, const std::u16string& name,
                            const std::u16string& text) override;
  std::int32_t DeleteValue(Key key, const std::u16string& name) override;
  std::int32_t DeleteKey(Key parent, const std::u16string& name) override;
  std::int32_t CloseKey(Key key) override;

 private:
  bool MayCreate(Key parent, std::u16string path);

  platform::RegistryApi& real_;
  std::vector<std::u16string> created_;
  std::vector<std::u16string> missing_;
};

class RehearsedFiles : public platform::Files {
 public:
  explicit RehearsedFiles(platform::Files& real) : real_(real) {}
  // The folder that the component looked for last; "" if none.
  const std::u16string& asked() const { return asked_; }
  // The folder that the component would have created; "" if none.
  const std::u16string& created() const { return created_; }

  bool FolderExists(const std::u16string& path) override;
  // Errors 58 and 76 as if it created the folder.
  void CreateFolder(const std::u16string& path) override;
  std::int64_t FileLength(const std::u16string& path) override;
  platform::FileStamp StampOf(const std::u16string& path) noexcept override;
  // These raise 70 "Permission denied".
  void DeleteFile(const std::u16string& path) override;
  void RenameFile(const std::u16string& path, const std::u16string& newPath) override;
  void ReplaceContents(const std::u16string& path, std::string_view bytes) override;

 private:
  platform::Files& real_;
  std::u16string asked_;
  std::u16string created_;
};

class RehearsedSettings : public platform::UserSettings {
 public:
  explicit RehearsedSettings(platform::UserSettings& real) : real_(real) {}
  bool wouldSave() const { return wouldSave_; }

  std::u16string Get(const std::u16string& application, const std::u16string& section,
                     const std::u16string& key) override;
  void Save(const std::u16string& application, const std::u16string& section,
            const std::u16string& key, const std::u16string& text) override;

 private:
  platform::UserSettings& real_;
  bool wouldSave_ = false;
};

// Notes the boxes and answers OK or No.
class RehearsedDialogs : public platform::Dialogs {
 public:
  // Texts of the boxes that the user would have seen, each on one line.
  const std::vector<std::u16string>& boxes() const { return boxes_; }
  platform::Answer Show(const platform::MessageBox& box) override;

 private:
  std::vector<std::u16string> boxes_;
};

// Starts nothing: error 70.
class NoProcesses : public platform::Processes {
 public:
  void Start(const std::u16string& commandLine) override;
};

// Has no windows; every call fails.
class NoWindows : public platform::WindowSystem {
 public:
  std::int32_t RegisterClass(const platform::WindowClass& windowClass) override;
  bool UnregisterClass(const std::u16string& className, std::int32_t instance) override;
  platform::WindowHandle CreateWindow(const platform::WindowDescription& description) override;
  bool DestroyWindow(platform::WindowHandle window) override;
  std::int32_t DefaultProcedure(platform::WindowHandle window, std::int32_t message,
                                std::int32_t wParam, std::int32_t lParam) override;
};

// Writes nothing: a rehearsal is no work of the component's.
class NoTrace : public platform::Trace {
 public:
  std::int64_t Now() noexcept override { return 0; }
  void Write(const platform::TraceLine& line) noexcept override;
};

// The thread's platform for as long as it exists; afterwards `real` is again.
class Rehearsal {
 public:
  explicit Rehearsal(platform::Platform& real);
  Rehearsal(const Rehearsal&) = delete;
  Rehearsal& operator=(const Rehearsal&) = delete;
  ~Rehearsal();

  const RehearsedRegistry& registry() const { return registry_; }
  const RehearsedFiles& files() const { return files_; }
  const RehearsedSettings& settings() const { return settings_; }
  // "" if there was none; the texts of several boxes are joined by a blank.
  std::u16string Boxes() const;

 private:
  platform::Platform& real_;
  RehearsedRegistry registry_;
  RehearsedFiles files_;
  RehearsedSettings settings_;
  RehearsedDialogs dialogs_;
  NoProcesses processes_;
  NoWindows windows_;
  NoTrace trace_;
  platform::Platform platform_;
};

}  // namespace diagnosis
