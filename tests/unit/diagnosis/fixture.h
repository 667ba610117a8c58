// A healthy clinic's computer on doubles, to be broken in one place.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "diagnosis/core/diagnosis.h"
#include "diagnosis/core/report.h"
#include "fakes/ports_fixture.h"
#include "host/link_program.h"
#include "platform/result_document.h"

namespace diagnosis_test {

using diagnosis::Finding;
using diagnosis::Findings;
using diagnosis::State;
using Ids = std::vector<std::string>;

// Only looking is allowed; anything else fails the test.
class Files : public platform::Files {
 public:
  bool FolderExists(const std::u16string& path) override {
    return folders.contains(WithoutSeparator(path));
  }
  std::int64_t FileLength(const std::u16string& path) override {
    if (!lengths.contains(path)) {
      throw automation::AutomationError(automation::RuntimeError::FileNotFound);
    }
    return lengths.at(path);
  }
  platform::FileStamp StampOf(const std::u16string& path) noexcept override {
    return {lengths.contains(path) || FolderExists(path) ? 1 : -1, 0};
  }
  void CreateFolder(const std::u16string& path) override { Changed(path); }
  void DeleteFile(const std::u16string& path) override { Changed(path); }
  void RenameFile(const std::u16string& path, const std::u16string& /*newPath*/) override {
    Changed(path);
  }
  void ReplaceContents(const std::u16string& path, std::string_view /*bytes*/) override {
    Changed(path);
  }

  std::set<std::u16string> folders;
  std::map<std::u16string, std::int64_t> lengths;

 private:
  static std::u16string WithoutSeparator(const std::u16string& path) {
    return path.ends_with(u'\\') ? path.substr(0, path.size() - 1) : path;
  }
  static void Changed(const std::u16string& path) {
    ADD_FAILURE() << "changes " << automation::ToUtf8(path);
  }
};

class Settings : public fakes::UserSettings {
 public:
  void Save(const std::u16string& /*application*/, const std::u16string& /*section*/,
            const std::u16string& /*key*/, const std::u16string& /*text*/) override {
    ADD_FAILURE() << "changes a setting";
  }
};

class Documents : public platform::ResultDocuments {
 public:
  std::unique_ptr<platform::ResultDocument> New() override {
    if (fails) {
      throw automation::AutomationError(automation::RuntimeError::CannotCreateObject);
    }
    return nullptr;
  }
  bool fails = false;
};

class Computer : public diagnosis::Computer {
 public:
  diagnosis::WindowsVersion Version() override { return version; }
  std::vector<diagnosis::ClassRegistration> Registrations(
      const std::vector<std::u16string>& hostPrograms) override {
    askedPrograms = hostPrograms;
    return registrations;
  }
  diagnosis::ProgramFile Examine(const std::u16string& path) override {
    return path == OwnPath() ? own : path.ends_with(u".exe") ? host : component;
  }
  std::u16string OwnPath() override { return u"C:\\VilnorCheck.exe"; }
  diagnosis::FolderFacts ExamineFolder(const std::u16string& /*path*/) override { return folder; }
  std::vector<diagnosis::FolderEntry> FilesIn(const std::u16string& /*folder*/) override {
    return entries;
  }
  std::vector<WindowOwner> WindowsOfClass(std::u16string_view className) override {
    if (failsUnexpectedly) {
      throw std::runtime_error("oväntat");
    }
    EXPECT_EQ(className, u"KestraToVilnor");
    return windows;
  }

  diagnosis::WindowsVersion version{
      .major = 10, .minor = 0, .build = 19045, .server = false, .bits = 64, .processBits = 32};
  std::vector<std::u16string> askedPrograms;
  std::vector<diagnosis::ClassRegistration> registrations = {
      {diagnosis::Origin::Machine, u"C:\\Vilnor\\1.5\\Vilnor.dll"}};
  diagnosis::ProgramFile component{
      .exists = true, .bits = 32, .version = u"1.5.1.0", .signature = diagnosis::Signature::Good};
  diagnosis::ProgramFile own = component;
  diagnosis::ProgramFile host = component;
  bool failsUnexpectedly = false;
  diagnosis::FolderFacts folder{
      .mayRead = true, .mayAddFiles = true, .mayAddFolders = true, .onNetwork = false, .twin = {}};
  std::vector<diagnosis::FolderEntry> entries;
  std::vector<WindowOwner> windows = {{u"Kestra.Main.exe", 1}};
};

class DiagnosisTest : public fakes::PortsFixture {
 protected:
  static constexpr std::uint32_t kMachine = fakes::MemoryRegistry::kLocalMachine;

  DiagnosisTest() {
    files.folders = {u"C:", u"C:\\Kestra", u"C:\\Kestra\\Vilnor"};
    files.lengths[u"C:\\Link\\Link.exe"] = 1;
    registry.SetText(kMachine, Key(0), u"Path", u"C:\\Kestra\\");
    registry.SetText(kMachine, LinkKey(), u"Path", u"C:\\Link");
    locale.UseSwedish();
  }

  static std::u16string Key(std::size_t number) {
    return std::u16string(host::kHostRegistrations.at(number));
  }
  static std::u16string LinkKey() { return std::u16string(host::kLinkRegistration); }

  Findings Diagnose() { return diagnosis::Diagnose({own, computer}); }
  Findings DiagnoseDatabase() {
    return diagnosis::DiagnoseDatabase(own, u"DSN=Kestra;PWD=hemligt");
  }

  // "id fault" and "id warning" of all findings that are not fine.
  static Ids Problems(const Findings& findings) {
    Ids ids;
    for (const Finding& finding : findings) {
      if (finding.state != State::Fine) {
        EXPECT_NE(finding.advice, u"") << automation::ToUtf8(finding.check.id);
        ids.push_back(automation::ToUtf8(finding.check.id) +
                      (finding.state == State::Fault ? " fault" : " warning"));
      }
    }
    return ids;
  }
  Ids Problems() { return Problems(Diagnose()); }

  static std::string TextOf(const Findings& findings, std::u16string_view id) {
    const auto found = std::find_if(findings.begin(), findings.end(),
                                    [&](const Finding& finding) { return finding.check.id == id; });
    return found == findings.end() ? "(no such line)" : automation::ToUtf8(found->text);
  }
  std::string TextOf(std::u16string_view id) { return TextOf(Diagnose(), id); }

  // The ports with these doubles in place of the usual ones.
  Files files;
  Settings settings;
  Documents documents;
  Computer computer;
  platform::Platform own = fakes::With(ports, files, settings, documents);
};

}  // namespace diagnosis_test
