// A test's own folder with request files, and the simulator's surroundings.
#pragma once

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <map>
#include <string>
#include <unistd.h>
#include <vector>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "native/local_files.h"
#include "native/xml_documents.h"
#include "simulator/core/unattended.h"

namespace simulator_test {

// Files on drive C: are kept in `written`; all others are the machine's.
class Files : public native::LocalFiles {
 public:
  bool FolderExists(const std::u16string& path) override {
    return OnDriveC(path) ? std::ranges::count(folders, path) > 0
                          : native::LocalFiles::FolderExists(path);
  }
  void CreateFolder(const std::u16string& path) override { folders.push_back(path); }
  void ReplaceContents(const std::u16string& path, std::string_view bytes) override {
    if (path.starts_with(refused)) {
      throw automation::AutomationError(automation::RuntimeError::PermissionDenied);
    }
    written[path] = bytes;
    steps.push_back(u"write " + path);
  }
  void DeleteFile(const std::u16string& path) override {
    if (keepsRequest) {
      throw automation::AutomationError(automation::RuntimeError::PermissionDenied);
    }
    native::LocalFiles::DeleteFile(path);
    steps.emplace_back(u"delete request");
  }

  std::map<std::u16string, std::string> written;
  std::vector<std::u16string> folders;
  std::vector<std::u16string> steps;
  // Paths that begin with this cannot be written.
  std::u16string refused = u"?";
  // No file can be deleted.
  bool keepsRequest = false;

 private:
  static bool OnDriveC(const std::u16string& path) { return path.starts_with(u"C:\\"); }
};

class Surroundings : public simulator::Surroundings {
 public:
  explicit Surroundings(std::vector<std::u16string>& steps) : steps_(steps) {}
  bool Post(const simulator::Notification& notification) override {
    ++attempts;
    if (attempts <= attemptsWithoutWindow) {
      return false;
    }
    posted.push_back(notification);
    steps_.emplace_back(u"post");
    return true;
  }
  void Pause(std::chrono::milliseconds time) override { paused += time; }
  void Copy(const std::u16string& from, const std::u16string& to) override {
    copied.emplace_back(from, to);
  }
  void Log(const std::u16string& line) override { log += automation::ToUtf8(line) + "\n"; }

  int attempts = 0;
  int attemptsWithoutWindow = 0;
  std::vector<simulator::Notification> posted;
  std::chrono::milliseconds paused{0};
  std::vector<std::pair<std::u16string, std::u16string>> copied;
  std::string log;

 private:
  std::vector<std::u16string>& steps_;
};

class Fixture : public testing::Test {
 protected:
  Fixture() { std::filesystem::create_directory(folder_); }
  ~Fixture() override { std::filesystem::remove_all(folder_); }

  // The path of a request file with these bytes.
  std::u16string File(const std::string& bytes) const {
    const auto path = folder_ / "InNewCase4711.xml";
    std::ofstream(path, std::ios::binary) << bytes;
    return path.u16string();
  }
  bool FileIsThere() const { return std::filesystem::exists(folder_ / "InNewCase4711.xml"); }

  static std::string Envelope(const std::string& request) {
    return "<?xml version='1.0' encoding='ISO-8859-1'?><Envelope LIFFVersion=\"2.0\">" + request +
           "</Envelope>";
  }
  static std::string ResultBlock(const std::string& message, const std::string& key,
                                 const std::string& userDefData) {
    return "<Result><ResultPath>C:\\X\\Out" + key + ".xml</ResultPath><ReturnWhen>7</ReturnWhen>" +
           "<UserDefData>" + userDefData + "</UserDefData><WnDNotification>" +
           "<ClassName>KestraToVilnor</ClassName><MessageId>" + message + "</MessageId><WParam>" +
           key + "</WParam></WnDNotification></Result>";
  }
  static std::string NewCase() {
    return Envelope("<NewCase>" + ResultBlock("10002", "4711", "4711&amp;12&amp;3") +
                    "<Title>(19450101-1234)</Title><PatientFirstName>\xC5sa</PatientFirstName>"
                    "<PatientLastName>\xD6"
                    "berg</PatientLastName><PatientId>19450101-1234</PatientId></NewCase>");
  }
  static std::string ExistingCase() {
    return Envelope("<Case>" + ResultBlock("10009", "55", "26-100") +
                    "<CaseId>26-100</CaseId></Case>");
  }
  static std::string PriorApproval() {
    return Envelope("<NewCase>" + ResultBlock("10001", "1234", "5&amp;6&amp;7&amp;1234&amp;A1") +
                    "<Title>FHP450101AB</Title><PatientFirstName/><PatientLastName/>"
                    "<PatientId>19450101-1234</PatientId><Contribution><Heading/><Statement/>"
                    "<FormDescr><FormDescrId>108692</FormDescrId></FormDescr></Contribution>"
                    "<Participant><UserId>annab</UserId></Participant></NewCase>");
  }
  static std::string Search() {
    return Envelope("<SearchCase><PatientId>19450101-1234</PatientId></SearchCase>");
  }

  native::XmlDocuments documents_;
  Files files_;
  Surroundings surroundings_{files_.steps};

 private:
  std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                  ("simulator-" + std::to_string(getpid()) + "-" +
                                   testing::UnitTest::GetInstance()->current_test_info()->name());
};

}  // namespace simulator_test
