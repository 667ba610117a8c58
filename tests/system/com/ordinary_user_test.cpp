// The registry keys that the component reads, with access lists that grant less than it requests,
// as for an ordinary user where no installer has granted the rights.
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gmock/gmock.h>
#include <memory>

#include "system/com/box_answerer.h"
#include "system/com/component.h"
#include "system/com/database.h"
#include "system/com/host_registration.h"
#include "system/com/key_rights.h"

namespace system_tests {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

const std::wstring kAppPaths = L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths";
const std::wstring kLinkKey = kAppPaths + L"\\Link.exe";
// In the order in which the component reads them.
const std::array<std::wstring, 3> kHostKeys = {L"SOFTWARE\\Kestra\\Kestra.Main.exe",
                                               kAppPaths + L"\\Kestra.Main.exe",
                                               kAppPaths + L"\\Kestra32.exe"};
const std::wstring kSettings = L"Software\\VB and VBA Program Settings\\KESTRA";
const std::wstring kSettingKey = kSettings + L"\\Environment";
constexpr UINT kNewCaseReady = 10002;

const std::wstring kMissing =
    L"Kunde inte hitta Vilnor Link programmet (Link.exe)\r\n\r\nAnge sökvägen manuellt under "
    L"menyalternativet:\r\nVerktyg/Inställningar - Denna arbetsplats/Generellt";
const std::wstring kRefused = L"-2147220983 Unknown Error: 5 in GetVilnorOutputPath";
const std::wstring kNotStarted = L"53 File not found in StartVilnor";

const std::wstring kNowhere = L"C:\\Nowhere";

MATCHER_P(IsWarning, text, "") {
  return arg.text == text && arg.title == L"Vilnor Link connection" &&
         arg.icon == LoadIconW(nullptr, IDI_WARNING);
}

bool IsThere(HKEY root, const std::wstring& key) {
  HKEY opened = nullptr;
  const LSTATUS status = RegOpenKeyExW(root, key.c_str(), 0, READ_CONTROL, &opened);
  RegCloseKey(opened);
  return status == ERROR_SUCCESS;
}

void SetText(HKEY root, const std::wstring& key, const wchar_t* name, const std::wstring& text) {
  EXPECT_EQ(RegSetKeyValueW(root, key.c_str(), name, REG_SZ, text.c_str(),
                            static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))),
            ERROR_SUCCESS);
}

void SetPath(const std::wstring& key, const std::wstring& path) {
  SetText(HKEY_LOCAL_MACHINE, key, L"Path", path);
}

void RemoveKey(const std::wstring& key) {
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, key.c_str());
}

// Every key exists and is writable; a host and Link.exe are registered, the setting is empty.
class OrdinaryUser : public testing::Test {
 protected:
  OrdinaryUser() {
    Init(*session_.get(), database_.ConnectionString());
    // Without an exchange directory, files are written to the root of this drive.
    fs::current_path(host_.ExchangeFolder().parent_path());
    for (const auto& key : kHostKeys) {
      if (!IsThere(HKEY_LOCAL_MACHINE, key)) {
        SetPath(key, L"");
      }
    }
  }
  ~OrdinaryUser() override {
    rights_.clear();
    fs::current_path(before_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kSettings.c_str());
    RemoveKey(kHostKeys[1]);
    RemoveKey(kHostKeys[2]);
  }

  std::wstring HostPath() const { return host_.ExchangeFolder().parent_path().wstring() + L"\\"; }
  void Restrict(HKEY root, const std::wstring& key, const wchar_t* accessList) {
    rights_.push_back(std::make_unique<KeyRights>(root, key, accessList));
  }
  void Restrict(const std::wstring& key, const wchar_t* accessList) {
    Restrict(HKEY_LOCAL_MACHINE, key, accessList);
  }
  // The host's path is in the place `place` and in all later ones.
  void RegisterHostFrom(std::size_t place) const {
    for (std::size_t i = 0; i < kHostKeys.size(); ++i) {
      SetPath(kHostKeys[i], i < place ? L"" : HostPath());
    }
  }
  static void SetSetting(const std::wstring& path) {
    SetText(HKEY_CURRENT_USER, kSettingKey, L"Vilnor", path);
  }
  static std::wstring Setting() {
    std::array<wchar_t, 1024> text{};
    DWORD bytes = sizeof text;
    RegGetValueW(HKEY_CURRENT_USER, kSettingKey.c_str(), L"Vilnor", RRF_RT_REG_SZ, nullptr,
                 text.data(), &bytes);
    return text.data();
  }
  void OpenExistCase() { EXPECT_EQ(session_->OpenExistCase(&linkedCase_), S_OK); }
  std::vector<std::wstring> Exchanged() const {
    std::vector<std::wstring> names;
    for (const auto& entry : fs::directory_iterator(host_.ExchangeFolder())) {
      names.push_back(entry.path().filename().wstring());
    }
    return names;
  }
  // The command line of Link.exe for a request.
  std::wstring LinkOn(const std::wstring& request) const {
    return host_.LinkProgram().wstring() + L" path=\"" + request +
           L"\" version=2 caller=KestraDental removefiles=1";
  }

  static fs::path InRoot(const std::wstring& file) { return fs::current_path().root_path() / file; }

  long linkedCase_ = 103;
  fs::path before_ = fs::current_path();
  HostRegistration host_;
  TestDatabase database_;
  ComPtr<_BVilnor> session_ = NewBVilnor();
  BoxAnswerer boxes_;
  std::vector<std::unique_ptr<KeyRights>> rights_;
};

// Too few for an existing key. Reading and writing do not include creating links, which the
// component also requests.
constexpr std::array kTooFew = {kReading, kReadingAndWriting, kNothing};

TEST_F(OrdinaryUser, UnreadableLinkProgramKeyFallsBackToTheSetting) {
  SetPath(kLinkKey, kNowhere);
  SetSetting(host_.LinkProgram().wstring());
  for (const auto* rights : kTooFew) {
    const KeyRights restricted(HKEY_LOCAL_MACHINE, kLinkKey, rights);
    session_->OpenVilnor();
    EXPECT_EQ(host_.TakeCommandLine(), host_.LinkProgram().wstring()) << rights;
    EXPECT_THAT(boxes_.Texts(), IsEmpty()) << rights;
  }
}

TEST_F(OrdinaryUser, UnreadableLinkProgramKeyWithoutASettingIsReportedAsMissing) {
  Restrict(kLinkKey, kReading);
  fs::remove(host_.ExchangeFolder());
  OpenExistCase();
  EXPECT_THAT(boxes_.Shown(), ElementsAre(IsWarning(kMissing)));
  EXPECT_THAT(Exchanged(), IsEmpty()) << "the folder is made, the request is not";
}

TEST_F(OrdinaryUser, SixRightsOnTheLinkProgramKeyAreEnough) {
  Restrict(kLinkKey, kSixRights);
  SetSetting(kNowhere);
  session_->OpenVilnor();
  EXPECT_EQ(host_.TakeCommandLine(), host_.LinkProgram().wstring());
  EXPECT_THAT(boxes_.Texts(), IsEmpty());
}

// Each place, each insufficient set of rights and each operation only once: Wine needs two seconds
// for a box.
TEST_F(OrdinaryUser, UnreadableHostKeyIsReportedAndTheRequestGoesToTheDrivesRoot) {
  long number = 4711;
  long bid = 12;
  long rid = 3;
  long unsent = 77;
  long sent = 71;
  struct Case {
    std::size_t place;
    const wchar_t* rights;
    std::function<HRESULT()> open;
    std::wstring request;
  };
  const std::array cases = {
      Case{0, kReading, [&] { return session_->OpenSearchPatient(&number); },
           L"Search19850312-1234.xml"},
      Case{0, kReadingAndWriting, [&] { return session_->OpenWithNewCase(&number, &bid, &rid); },
           L"InNewCase4711.xml"},
      Case{0, kNothing, [&] { return session_->OpenExistCase(&linkedCase_); },
           L"InExistCase103.xml"},
      Case{1, kReading, [&] { return session_->OpenWithNewFHP(&number, &bid, &rid, &unsent); },
           L"InNewFHP77.xml"},
      Case{2, kReading, [&] { return session_->OpenExistFHP(&sent); }, L"InExistCase101.xml"}};
  std::vector<testing::Matcher<ShownBox>> told;
  for (const auto& [place, rights, open, request] : cases) {
    RegisterHostFrom(place);
    const KeyRights restricted(HKEY_LOCAL_MACHINE, kHostKeys[place], rights);
    EXPECT_EQ(open(), S_OK);
    EXPECT_EQ(host_.TakeCommandLine(), LinkOn(L"\\" + request));
    told.push_back(IsWarning(kRefused));
    EXPECT_THAT(boxes_.Shown(), testing::ElementsAreArray(told)) << place;
    EXPECT_TRUE(fs::remove(InRoot(request)));
    EXPECT_THAT(Exchanged(), IsEmpty());
  }
}

TEST_F(OrdinaryUser, UnreadableHostKeysStillAllowOpenVilnor) {
  for (const auto& key : kHostKeys) {
    Restrict(key, kNothing);
  }
  session_->OpenVilnor();
  EXPECT_EQ(host_.TakeCommandLine(), host_.LinkProgram().wstring());
  EXPECT_THAT(boxes_.Texts(), IsEmpty());
}

TEST_F(OrdinaryUser, UnreadableHostKeyLeavesAResultUnread) {
  const fs::path result = host_.ExchangeFolder() / L"OutNewCase4711.xml";
  std::ofstream(result) << "<a><Cancelled>1</Cancelled></a>";
  Restrict(kHostKeys[0], kReading);
  SendMessageA(NotificationWindowHandles().front(), kNewCaseReady, 4711, 0);
  EXPECT_THAT(boxes_.Shown(), ElementsAre(IsWarning(kRefused)));
  EXPECT_TRUE(fs::exists(result));
}

TEST_F(OrdinaryUser, SixRightsOnTheHostKeyWithThePathAreEnough) {
  Restrict(kHostKeys[0], kSixRights);
  Restrict(kHostKeys[1], kNothing);
  Restrict(kHostKeys[2], kNothing);
  OpenExistCase();
  EXPECT_EQ(host_.TakeCommandLine(), LinkOn(host_.ExchangeFolder() / L"InExistCase103.xml"));
  EXPECT_THAT(boxes_.Texts(), IsEmpty());
}

// The keys above a missing one are also opened for writing.
TEST_F(OrdinaryUser, MissingHostKeysThatCannotBeCreatedAreReported) {
  RemoveKey(L"SOFTWARE\\Kestra");
  Restrict(L"SOFTWARE", kReading);
  OpenExistCase();
  EXPECT_EQ(host_.TakeCommandLine(), LinkOn(L"\\InExistCase103.xml"));
  EXPECT_THAT(boxes_.Texts(), ElementsAre(kRefused));
  EXPECT_FALSE(IsThere(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Kestra"));
  EXPECT_TRUE(fs::remove(InRoot(L"InExistCase103.xml")));
}

bool InWine() {
  return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// Wine's server checks the access list of an existing key, but not the parent's list when it
// creates a key directly below, so the empty key is created. Windows refuses.
TEST_F(OrdinaryUser, OnlyWineCreatesAMissingKeyBelowAReadOnlyParent) {
  for (const auto& key : {kLinkKey, kHostKeys[0], kHostKeys[1], kHostKeys[2]}) {
    RemoveKey(key);
    const KeyRights parent(HKEY_LOCAL_MACHINE, key.substr(0, key.rfind(L'\\')), kReading);
    HKEY made = nullptr;
    EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0, KEY_READ, nullptr,
                              &made, nullptr),
              InWine() ? ERROR_SUCCESS : ERROR_ACCESS_DENIED);
    RegCloseKey(made);
  }
}

class OfTheSetting : public OrdinaryUser {
 protected:
  void SetUp() override { SetPath(kLinkKey, L""); }
};

TEST_F(OfTheSetting, StalePathInAReadOnlySettingIsReportedAndStillReturned) {
  SetSetting(HostPath() + L"Gone.exe");
  Restrict(HKEY_CURRENT_USER, kSettingKey, kReading);
  session_->OpenVilnor();
  EXPECT_THAT(boxes_.Texts(), ElementsAre(L"5 Invalid procedure call or argument in SetVilnorPath",
                                          kMissing, kNotStarted));
  EXPECT_EQ(boxes_.Shown()[0].icon, LoadIconW(nullptr, IDI_ERROR));
  EXPECT_EQ(Setting(), HostPath() + L"Gone.exe");
}

TEST_F(OfTheSetting, ReadOnlySettingStartsTheLinkProgram) {
  SetSetting(host_.LinkProgram().wstring());
  Restrict(HKEY_CURRENT_USER, kSettingKey, kReading);
  session_->OpenVilnor();
  EXPECT_EQ(host_.TakeCommandLine(), host_.LinkProgram().wstring());
  EXPECT_THAT(boxes_.Texts(), IsEmpty());
}

TEST_F(OfTheSetting, UnreadableSettingIsReportedAsMissing) {
  SetSetting(host_.LinkProgram().wstring());
  {
    const KeyRights none(HKEY_CURRENT_USER, kSettingKey, kNothing);
    session_->OpenVilnor();
  }
  EXPECT_THAT(boxes_.Texts(), ElementsAre(kMissing));
  EXPECT_EQ(Setting(), host_.LinkProgram().wstring());
}

TEST_F(OfTheSetting, MissingSettingIsReportedAndNotCreated) {
  SetSetting(L"");
  RegDeleteKeyW(HKEY_CURRENT_USER, kSettingKey.c_str());
  Restrict(HKEY_CURRENT_USER, kSettings, kReading);
  session_->OpenVilnor();
  EXPECT_THAT(boxes_.Texts(), ElementsAre(kMissing));
  EXPECT_FALSE(IsThere(HKEY_CURRENT_USER, kSettingKey));
}

}  // namespace
}  // namespace system_tests
