#include "host/link_program.h"

#include <new>
#include <optional>
#include <utility>

#include "fakes/component_fixture.h"

namespace host {
namespace {

using Texts = std::vector<std::u16string>;
using platform::Icon;

constexpr std::uint32_t kLocalMachine = 0x80000002;
constexpr const char16_t* kLinkKey =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Link.exe";
constexpr const char16_t* kMainKey = u"SOFTWARE\\Kestra\\Kestra.Main.exe";
constexpr const char16_t* kMainAppPath =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra.Main.exe";
constexpr const char16_t* kOldAppPath =
    u"SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\Kestra32.exe";
const platform::MessageBox kMissing{
    .text =
        u"Kunde inte hitta Vilnor Link programmet (Link.exe)\r\n\r\nAnge sökvägen manuellt "
        u"under menyalternativet:\r\nVerktyg/Inställningar - Denna arbetsplats/Generellt",
    .title = u"Vilnor Link connection",
    .icon = Icon::Exclamation,
    .buttons = platform::Buttons::Ok};

// The host's settings, which cannot be read or written.
class RefusingSettings : public fakes::UserSettings {
 public:
  std::u16string Get(const std::u16string& application, const std::u16string& section,
                     const std::u16string& key) override {
    RefuseIf(refusesGet);
    return UserSettings::Get(application, section, key);
  }
  void Save(const std::u16string& application, const std::u16string& section,
            const std::u16string& key, const std::u16string& text) override {
    RefuseIf(refusesSave);
    UserSettings::Save(application, section, key, text);
  }
  bool refusesGet = false;
  bool refusesSave = false;

 private:
  static void RefuseIf(bool refuses) {
    if (refuses) {
      throw automation::AutomationError(automation::RuntimeError::InvalidProcedureCall);
    }
  }
};

// A disk that cannot give a file's length.
class FilesWithoutLength : public native::LocalFiles {
 public:
  explicit FilesWithoutLength(automation::RuntimeError error) : error_(error) {}
  std::int64_t FileLength(const std::u16string& /*path*/) override {
    throw automation::AutomationError(error_);
  }

 private:
  automation::RuntimeError error_;
};

// Memory runs out when a key is opened.
class ExhaustedRegistry : public fakes::MemoryRegistry {
 public:
  std::int32_t CreateKey(Key /*parent*/, const std::u16string& /*path*/, std::uint32_t /*access*/,
                         Key& /*opened*/, std::uint32_t& /*disposition*/) override {
    throw std::bad_alloc();
  }
};

// Refuses this user one key, whether it exists or would have to be created.
class RefusingRegistry : public fakes::MemoryRegistry {
 public:
  explicit RefusingRegistry(std::u16string refused) : refused_(std::move(refused)) {}
  std::int32_t CreateKey(Key parent, const std::u16string& path, std::uint32_t access, Key& opened,
                         std::uint32_t& disposition) override {
    return path == refused_ ? kAccessDenied
                            : MemoryRegistry::CreateKey(parent, path, access, opened, disposition);
  }

 private:
  std::u16string refused_;
};

class LinkProgram : public fakes::ComponentFixture {
 protected:
  ~LinkProgram() override { platform::Use(ports); }

  // Ports that a test has replaced.
  void UsePorts(platform::Files& someFiles, platform::UserSettings& someSettings,
                platform::RegistryApi& someRegistry) {
    changed_.emplace(fakes::With(ports, someFiles, someSettings, someRegistry));
    platform::Use(*changed_);
  }
  std::u16string& Setting() { return userSettings.stored[{u"KESTRA", u"Environment", u"Vilnor"}]; }
  std::u16string FileOf(const std::string& name, const std::string& bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return hostPath + automation::FromUtf8(name);
  }

 private:
  std::optional<platform::Platform> changed_;
};

TEST_F(LinkProgram, RegisteredLinkProgramIsFoundWithOrWithoutABackslash) {
  registry.SetText(kLocalMachine, kLinkKey, u"Path", u"C:\\Link");
  EXPECT_EQ(GetVilnorCommandLine(), u"C:\\Link\\Link.exe");
  registry.SetText(kLocalMachine, kLinkKey, u"Path", u"C:\\Link\\");
  EXPECT_EQ(GetVilnorCommandLine(), u"C:\\Link\\Link.exe");
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(LinkProgram, LinkProgramWithoutRegistrationAndSettingIsMissing) {
  EXPECT_EQ(GetVilnorCommandLine(), std::nullopt);
  EXPECT_EQ(dialogs.shown, std::vector<platform::MessageBox>{kMissing});
  EXPECT_TRUE(registry.KeyExists(kLocalMachine, kLinkKey));
}

TEST_F(LinkProgram, RefusingRegistryLeavesTheSettingsLinkProgram) {
  registry.DenyWrite(kLocalMachine, u"SOFTWARE");
  Setting() = FileOf("Länk.exe", "MZ");
  EXPECT_EQ(GetVilnorCommandLine(), Setting());
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(LinkProgram, RefusedRegistryKeyLeavesTheSettingsLinkProgram) {
  RefusingRegistry refusing(kLinkKey);
  refusing.SetText(kLocalMachine, kLinkKey, u"Path", u"X:\\Nowhere");
  UsePorts(files, userSettings, refusing);
  Setting() = FileOf("Link.exe", "MZ");
  EXPECT_EQ(GetVilnorCommandLine(), Setting());
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(LinkProgram, StaleSettingIsForgottenButStillReturned) {
  const std::u16string stale = hostPath + u"Gone.exe";
  Setting() = stale;
  EXPECT_EQ(GetVilnorCommandLine(), stale);
  EXPECT_EQ(Setting(), u"");
  EXPECT_EQ(dialogs.shown, std::vector<platform::MessageBox>{kMissing});
}

TEST_F(LinkProgram, EmptyFileIsNoLinkProgramAndTheSettingStays) {
  const std::u16string empty = FileOf("Link.exe", "");
  Setting() = empty;
  EXPECT_EQ(GetVilnorCommandLine(), std::nullopt);
  EXPECT_EQ(Setting(), empty);
  EXPECT_EQ(dialogs.shown, std::vector<platform::MessageBox>{kMissing});
}

TEST_F(LinkProgram, FolderIsNoLinkProgramAndTheSettingStays) {
  Setting() = hostPath;
  EXPECT_EQ(GetVilnorCommandLine(), std::nullopt);
  EXPECT_EQ(Setting(), hostPath);
  EXPECT_EQ(dialogs.shown, std::vector<platform::MessageBox>{kMissing});
}

TEST_F(LinkProgram, ImpossibleSettingIsReportedAsMissing) {
  Setting() = hostPath + std::u16string(5000, u'x');
  EXPECT_EQ(GetVilnorCommandLine(), std::nullopt);
  EXPECT_EQ(Setting(), hostPath + std::u16string(5000, u'x'));
  EXPECT_EQ(dialogs.shown, std::vector<platform::MessageBox>{kMissing});
}

TEST_F(LinkProgram, AnyRegistryErrorLeavesTheSettingsLinkProgram) {
  ExhaustedRegistry exhausted;
  UsePorts(files, userSettings, exhausted);
  Setting() = FileOf("Link.exe", "MZ");
  EXPECT_EQ(GetVilnorCommandLine(), Setting());
  EXPECT_TRUE(dialogs.shown.empty());
  Setting() = u"";
  EXPECT_EQ(GetVilnorCommandLine(), std::nullopt);
  EXPECT_EQ(dialogs.shown, std::vector<platform::MessageBox>{kMissing});
}

TEST_F(LinkProgram, UnreadableSettingIsMissingAndNothingIsSaved) {
  RefusingSettings refusing;
  refusing.refusesGet = true;
  UsePorts(files, refusing, registry);
  EXPECT_EQ(GetVilnorCommandLine(), std::nullopt);
  EXPECT_EQ(dialogs.shown, std::vector<platform::MessageBox>{kMissing});
  EXPECT_TRUE(refusing.stored.empty());
}

TEST_F(LinkProgram, UnforgettableStaleSettingIsReportedTwiceAndReturned) {
  const std::u16string stale = hostPath + u"Gone.exe";
  RefusingSettings refusing;
  refusing.stored[{u"KESTRA", u"Environment", u"Vilnor"}] = stale;
  refusing.refusesSave = true;
  UsePorts(files, refusing, registry);
  EXPECT_EQ(GetVilnorCommandLine(), stale);
  EXPECT_EQ(dialogs.shown, (std::vector<platform::MessageBox>{
                               {.text = u"5 Invalid procedure call or argument in SetVilnorPath",
                                .title = u"Vilnor Link connection",
                                .icon = Icon::Critical},
                               kMissing}));
}

TEST_F(LinkProgram, SettingWhoseFileCannotBeReadIsMissingAndStays) {
  using automation::RuntimeError;
  for (const auto error : {RuntimeError::PermissionDenied, RuntimeError::PathNotFound}) {
    FilesWithoutLength unreachable(error);
    UsePorts(unreachable, userSettings, registry);
    Setting() = u"Q:\\Link.exe";
    dialogs.shown.clear();
    EXPECT_EQ(GetVilnorCommandLine(), std::nullopt);
    EXPECT_EQ(Setting(), u"Q:\\Link.exe");
    EXPECT_EQ(dialogs.shown, std::vector<platform::MessageBox>{kMissing});
  }
}

TEST_F(LinkProgram, RegisteredLinkProgramIsNotLookedForOnDisk) {
  registry.SetText(kLocalMachine, kLinkKey, u"Path", u"X:\\Nowhere");
  Setting() = FileOf("Link.exe", "MZ");
  EXPECT_EQ(GetVilnorCommandLine(), u"X:\\Nowhere\\Link.exe");
}

TEST_F(LinkProgram, RegistrationThatIsNotTextIsIgnored) {
  registry.SetOther(kLocalMachine, kLinkKey, u"Path", 4);
  EXPECT_EQ(GetVilnorCommandLine(), std::nullopt);
}

class ExchangeDirectory : public LinkProgram {};

TEST_F(ExchangeDirectory, ExchangeDirectoryIsOfTheFirstRegistrationWithAPath) {
  const std::u16string other = hostPath + u"Other\\";
  std::filesystem::create_directory(folder / "Other");
  registry.SetText(kLocalMachine, kOldAppPath, u"Path", hostPath);
  EXPECT_EQ(GetVilnorOutputPath().Value(), exchangeDirectory);
  registry.SetText(kLocalMachine, kMainAppPath, u"Path", other);
  EXPECT_EQ(GetVilnorOutputPath().Value(), other + u"Vilnor");
  registry.SetText(kLocalMachine, kMainKey, u"Path", hostPath);
  EXPECT_EQ(GetVilnorOutputPath().Value(), exchangeDirectory);
  EXPECT_TRUE(std::filesystem::is_directory(folder / "Other" / "Vilnor"));
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(ExchangeDirectory, ExchangeDirectoryIsMadeWhenMissingAndKeptWhenPresent) {
  registry.SetText(kLocalMachine, kMainKey, u"Path", hostPath);
  EXPECT_EQ(GetVilnorOutputPath().Value(), exchangeDirectory);
  Put(u"OutNewCase1.xml", "x");
  EXPECT_EQ(GetVilnorOutputPath().Value(), exchangeDirectory);
  EXPECT_TRUE(Exists(u"OutNewCase1.xml"));
}

TEST_F(ExchangeDirectory, ExchangeDirectoryIsJoinedWithoutASeparator) {
  registry.SetText(kLocalMachine, kMainKey, u"Path", hostPath + u"Kestra");
  EXPECT_EQ(GetVilnorOutputPath().Value(), hostPath + u"KestraVilnor");
  EXPECT_TRUE(std::filesystem::is_directory(folder / "KestraVilnor"));
}

TEST_F(ExchangeDirectory, MissingHostRegistrationIsReported) {
  EXPECT_TRUE(GetVilnorOutputPath().Failed());
  EXPECT_EQ(dialogs.shown, (std::vector<platform::MessageBox>{
                               {.text = u"10001 Did not find Kestra Dental registry information in "
                                        u"GetVilnorOutputPath",
                                .title = u"Vilnor Link connection",
                                .icon = Icon::Exclamation}}));
}

TEST_F(ExchangeDirectory, RefusedHostRegistrationEndsTheSearch) {
  registry.SetText(kLocalMachine, kOldAppPath, u"Path", hostPath);
  registry.DenyWrite(kLocalMachine, u"SOFTWARE\\Kestra");
  EXPECT_TRUE(GetVilnorOutputPath().Failed());
  EXPECT_EQ(dialogs.Texts(), Texts{u"-2147220983 Unknown Error: 5 in GetVilnorOutputPath"});
}

// A user with read rights only: a missing key cannot be created, an existing one not opened.
TEST_F(ExchangeDirectory, AnyRefusedHostRegistrationEndsTheSearch) {
  const std::vector<std::u16string> keys = {kMainKey, kMainAppPath, kOldAppPath};
  for (std::size_t place = 0; place < keys.size(); ++place) {
    for (const bool isThere : {true, false}) {
      RefusingRegistry refusing(keys[place]);
      for (std::size_t i = place + (isThere ? 0 : 1); i < keys.size(); ++i) {
        refusing.SetText(kLocalMachine, keys[i], u"Path", hostPath);
      }
      UsePorts(files, userSettings, refusing);
      dialogs.shown.clear();
      EXPECT_TRUE(GetVilnorOutputPath().Failed());
      EXPECT_EQ(dialogs.shown, (std::vector<platform::MessageBox>{
                                   {.text = u"-2147220983 Unknown Error: 5 in GetVilnorOutputPath",
                                    .title = u"Vilnor Link connection",
                                    .icon = Icon::Exclamation}}))
          << place << isThere;
      EXPECT_EQ(refusing.KeyExists(kLocalMachine, keys[place]), isThere);
    }
  }
}

TEST_F(ExchangeDirectory, ExchangeDirectoryWithoutAParentIsReported) {
  registry.SetText(kLocalMachine, kMainKey, u"Path", hostPath + u"Nowhere\\");
  EXPECT_TRUE(GetVilnorOutputPath().Failed());
  EXPECT_EQ(dialogs.Texts(), Texts{u"76 Path not found in GetVilnorOutputPath"});
}

TEST_F(ExchangeDirectory, FileInTheExchangeDirectorysPlaceIsReported) {
  registry.SetText(kLocalMachine, kMainKey, u"Path", hostPath);
  FileOf("Vilnor", "x");
  EXPECT_TRUE(GetVilnorOutputPath().Failed());
  EXPECT_EQ(dialogs.Texts(), Texts{u"58 File already exists in GetVilnorOutputPath"});
}

class Start : public LinkProgram {};

TEST_F(Start, CommandLineNamesTheRequest) {
  StartVilnor(u"C:\\Link\\Link.exe", u"C:\\Kestra\\Vilnor\\InNewCase4711.xml");
  EXPECT_EQ(processes.started,
            Texts{u"C:\\Link\\Link.exe path=\"C:\\Kestra\\Vilnor\\InNewCase4711.xml\" version=2 "
                  u"caller=KestraDental removefiles=1"});
}

TEST_F(Start, ProgramPathWithBlanksIsNotQuoted) {
  StartVilnor(u"C:\\Program Files\\Link.exe", u"C:\\K D\\In 1.xml");
  EXPECT_EQ(processes.started,
            Texts{u"C:\\Program Files\\Link.exe path=\"C:\\K D\\In 1.xml\" version=2 "
                  u"caller=KestraDental removefiles=1"});
}

TEST_F(Start, StartWithoutARequestHasNoArguments) {
  StartVilnor(u"C:\\Link\\Link.exe", u"");
  EXPECT_EQ(processes.started, Texts{u"C:\\Link\\Link.exe"});
}

TEST_F(Start, FailedStartIsReported) {
  processes.fails = true;
  StartVilnor(u"C:\\Link\\Link.exe", u"x");
  EXPECT_EQ(dialogs.shown,
            (std::vector<platform::MessageBox>{{.text = u"53 File not found in StartVilnor",
                                                .title = u"Vilnor Link connection",
                                                .icon = Icon::Exclamation}}));
}

TEST_F(LinkProgram, LinkProgramSettingIsStoredWhereTheHostKeepsIt) {
  SetVilnorPath(u"D:\\Länk\\Link.exe");
  EXPECT_EQ(Setting(), u"D:\\Länk\\Link.exe");
}

TEST_F(LinkProgram, UnstorableLinkProgramSettingIsReportedAsCritical) {
  RefusingSettings refusing;
  refusing.refusesSave = true;
  UsePorts(files, refusing, registry);
  SetVilnorPath(u"x");
  EXPECT_EQ(dialogs.shown, (std::vector<platform::MessageBox>{
                               {.text = u"5 Invalid procedure call or argument in SetVilnorPath",
                                .title = u"Vilnor Link connection",
                                .icon = Icon::Critical}}));
}

}  // namespace
}  // namespace host
