// Ports that pass every call on to a working one unless the plan makes it fail.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "fakes/intercepted_database.h"
#include "faults/fault_plan.h"
#include "platform/files.h"
#include "platform/processes.h"
#include "platform/registry_api.h"
#include "platform/result_document.h"
#include "platform/user_settings.h"

namespace faults {

class FaultyProcesses : public platform::Processes {
 public:
  FaultyProcesses(FaultPlan& plan, platform::Processes& inner) : plan_(plan), inner_(inner) {}
  void Start(const std::u16string& commandLine) override {
    plan_.Pass(Call::StartProcess);
    inner_.Start(commandLine);
  }

 private:
  FaultPlan& plan_;
  platform::Processes& inner_;
};

class FaultyFiles : public platform::Files {
 public:
  FaultyFiles(FaultPlan& plan, platform::Files& inner) : plan_(plan), inner_(inner) {}
  bool FolderExists(const std::u16string& path) override { return inner_.FolderExists(path); }
  void CreateFolder(const std::u16string& path) override {
    plan_.Pass(Call::CreateFolder);
    inner_.CreateFolder(path);
  }
  std::int64_t FileLength(const std::u16string& path) override {
    plan_.Pass(Call::FileLength);
    return inner_.FileLength(path);
  }
  platform::FileStamp StampOf(const std::u16string& path) noexcept override {
    return inner_.StampOf(path);
  }
  void DeleteFile(const std::u16string& path) override {
    plan_.Pass(Call::DeleteFile);
    inner_.DeleteFile(path);
  }
  void RenameFile(const std::u16string& path, const std::u16string& newPath) override {
    plan_.Pass(Call::RenameFile);
    inner_.RenameFile(path, newPath);
  }
  void ReplaceContents(const std::u16string& path, std::string_view bytes) override {
    plan_.Pass(Call::ReplaceContents);
    inner_.ReplaceContents(path, bytes);
  }

 private:
  FaultPlan& plan_;
  platform::Files& inner_;
};

class FaultySettings : public platform::UserSettings {
 public:
  FaultySettings(FaultPlan& plan, platform::UserSettings& inner) : plan_(plan), inner_(inner) {}
  std::u16string Get(const std::u16string& application, const std::u16string& section,
                     const std::u16string& key) override {
    plan_.Pass(Call::GetSetting);
    return inner_.Get(application, section, key);
  }
  void Save(const std::u16string& application, const std::u16string& section,
            const std::u16string& key, const std::u16string& text) override {
    plan_.Pass(Call::SaveSetting);
    inner_.Save(application, section, key, text);
  }

 private:
  FaultPlan& plan_;
  platform::UserSettings& inner_;
};

// Closing a key does not fail.
class FaultyRegistry : public platform::RegistryApi {
 public:
  FaultyRegistry(FaultPlan& plan, platform::RegistryApi& inner) : plan_(plan), inner_(inner) {}
  std::int32_t OpenKey(Key parent, const std::u16string& path, std::uint32_t access,
                       Key& opened) override {
    return Try([&] { return inner_.OpenKey(parent, path, access, opened); });
  }
  std::int32_t CreateKey(Key parent, const std::u16string& path, std::uint32_t access, Key& opened,
                         std::uint32_t& disposition) override {
    return Try([&] { return inner_.CreateKey(parent, path, access, opened, disposition); });
  }
  std::int32_t QueryLimits(Key key, Limits& limits) override {
    return Try([&] { return inner_.QueryLimits(key, limits); });
  }
  std::int32_t EnumValue(Key key, std::uint32_t index, const Limits& limits,
                         ValueEntry& entry) override {
    return Try([&] { return inner_.EnumValue(key, index, limits, entry); });
  }
  std::int32_t EnumKey(Key key, std::uint32_t index, const Limits& limits,
                       std::u16string& name) override {
    return Try([&] { return inner_.EnumKey(key, index, limits, name); });
  }
  std::int32_t SetTextValue(Key key, const std::u16string& name,
                            const std::u16string& text) override {
    return Try([&] { return inner_.SetTextValue(key, name, text); });
  }
  std::int32_t DeleteValue(Key key, const std::u16string& name) override {
    return Try([&] { return inner_.DeleteValue(key, name); });
  }
  std::int32_t DeleteKey(Key parent, const std::u16string& name) override {
    return Try([&] { return inner_.DeleteKey(parent, name); });
  }
  std::int32_t CloseKey(Key key) override { return inner_.CloseKey(key); }

 private:
  template <class Work>
  std::int32_t Try(Work work) {
    const std::int32_t code = plan_.PassWithCode(Call::Registry);
    return code != 0 ? code : work();
  }

  FaultPlan& plan_;
  platform::RegistryApi& inner_;
};

class FaultyDatabase : public fakes::InterceptedDatabase {
 public:
  FaultyDatabase(FaultPlan& plan, platform::Database& inner)
      : InterceptedDatabase(inner), plan_(plan) {}

 private:
  void On(fakes::DatabaseCall call, const std::u16string& statement,
          const std::function<void()>& work) override;

  FaultPlan& plan_;
};

class FaultyDocuments : public platform::ResultDocuments {
 public:
  FaultyDocuments(FaultPlan& plan, platform::ResultDocuments& inner) : plan_(plan), inner_(inner) {}
  std::unique_ptr<platform::ResultDocument> New() override;

 private:
  FaultPlan& plan_;
  platform::ResultDocuments& inner_;
};

}  // namespace faults
