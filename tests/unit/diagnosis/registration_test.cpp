// The host's registrations and Link.exe, found by the component's own code without changing
// anything.
#include <gmock/gmock.h>

#include "unit/diagnosis/fixture.h"

namespace diagnosis_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class RegistrationDiagnosis : public DiagnosisTest {
 protected:
  // A computer on which only these keys of the host have a path.
  void Register(const std::map<std::size_t, std::u16string>& paths) {
    registry.DeleteKey(kMachine, Key(0));
    for (const auto& [number, path] : paths) {
      registry.SetText(kMachine, Key(number), u"Path", path);
    }
  }
  void PutSetting(const std::u16string& path) {
    registry.DeleteKey(kMachine, LinkKey());
    settings.stored[{u"KESTRA", u"Environment", u"Vilnor"}] = path;
  }
  std::set<std::u16string> HostKeys() const {
    std::set<std::u16string> keys;
    for (std::size_t number = 0; number < host::kHostRegistrations.size(); ++number) {
      if (registry.KeyExists(kMachine, Key(number))) {
        keys.insert(Key(number));
      }
    }
    return keys;
  }
};

TEST_F(RegistrationDiagnosis, MissingKeysAreNotCreated) {
  Register({{2, u"C:\\Kestra\\"}});
  EXPECT_EQ(Problems(), Ids{});
  EXPECT_EQ(HostKeys(), std::set<std::u16string>{Key(2)});
  EXPECT_EQ(registry.OpenHandles(), 0U);
  EXPECT_THAT(TextOf(u"host-key-1"), HasSubstr("saknas. Vilnor skapar den tom"));
  EXPECT_THAT(TextOf(u"host-key-3"), HasSubstr("gäller: Path är C:\\Kestra\\"));
}

TEST_F(RegistrationDiagnosis, LaterKeysAreNotRead) {
  registry.SetText(kMachine, Key(1), u"Path", u"C:\\Other\\");
  EXPECT_THAT(TextOf(u"host-key-2"), HasSubstr("läses inte"));
  EXPECT_EQ(TextOf(u"host-registration"), "Registrerat i C:\\Kestra\\");
}

TEST_F(RegistrationDiagnosis, NoRegistrationIsOneFaultWithTheComponentsBox) {
  Register({});
  EXPECT_EQ(Problems(), Ids{"host-registration fault"});
  EXPECT_THAT(TextOf(u"host-registration"),
              HasSubstr("10001 Did not find Kestra Dental registry information"));
  EXPECT_EQ(TextOf(u"exchange-folder"), "(no such line)");
  EXPECT_EQ(HostKeys(), std::set<std::u16string>{});
}

TEST_F(RegistrationDiagnosis, KeyThatTheUserMayOnlyReadIsAFault) {
  registry.DenyWrite(kMachine, Key(0));
  EXPECT_EQ(Problems(), Ids{"host-key-1 fault"});
  EXPECT_THAT(TextOf(u"host-key-1"),
              AllOf(HasSubstr("får inte öppna nyckeln"), HasSubstr("Unknown Error: 5")));
}

TEST_F(RegistrationDiagnosis, MissingKeyThatTheUserMayNotCreateIsAFault) {
  Register({{1, u"C:\\Kestra\\"}});
  registry.MakeKey(kMachine, u"SOFTWARE\\Kestra");
  registry.DenyWrite(kMachine, u"SOFTWARE\\Kestra");
  EXPECT_EQ(Problems(), Ids{"host-key-1 fault"});
  EXPECT_THAT(TextOf(u"host-key-1"), HasSubstr("får inte skapa den"));
}

TEST_F(RegistrationDiagnosis, PathOfAnotherTypeIsAWarningAtItsKey) {
  Register({{1, u"C:\\Kestra\\"}});
  constexpr std::uint32_t expandable = 2;
  registry.SetOther(kMachine, Key(0), u"Path", expandable);
  EXPECT_EQ(Problems(), Ids{"host-key-1 warning"});
}

TEST_F(RegistrationDiagnosis, PathWithoutSeparatorIsAWarningThatNamesTheFolder) {
  Register({{0, u"C:\\Kestra"}});
  files.folders.insert(u"C:\\KestraVilnor");
  EXPECT_EQ(Problems(), Ids{"host-registration warning"});
  EXPECT_THAT(TextOf(u"host-registration"), HasSubstr("C:\\KestraVilnor"));
  EXPECT_EQ(computer.askedPrograms.front(), u"C:\\Kestra\\Kestra.Main.exe");
}

TEST_F(RegistrationDiagnosis, MissingLinkProgramIsAFaultWithTheComponentsBox) {
  registry.DeleteKey(kMachine, LinkKey());
  EXPECT_EQ(Problems(), Ids{"link-program fault"});
  EXPECT_THAT(TextOf(u"link-program"),
              HasSubstr("Kunde inte hitta Vilnor Link programmet (Link.exe)"));
}

TEST_F(RegistrationDiagnosis, RegisteredLinkProgramWithoutItsFileIsAFault) {
  files.lengths.clear();
  EXPECT_EQ(Problems(), Ids{"link-program fault"});
  EXPECT_THAT(TextOf(u"link-program"), HasSubstr("C:\\Link\\Link.exe"));
}

TEST_F(RegistrationDiagnosis, LinkProgramOfTheSettingIsFine) {
  PutSetting(u"C:\\Link\\Link.exe");
  EXPECT_EQ(Problems(), Ids{});
  EXPECT_THAT(TextOf(u"link-program"), HasSubstr("användarens inställning"));
}

TEST_F(RegistrationDiagnosis, RefusedLinkKeyIsNamedBesideTheSetting) {
  PutSetting(u"C:\\Link\\Link.exe");
  registry.SetText(kMachine, LinkKey(), u"Path", u"C:\\Elsewhere");
  registry.DenyWrite(kMachine, LinkKey());
  EXPECT_EQ(Problems(), Ids{});
  EXPECT_THAT(TextOf(u"link-program"), HasSubstr("får inte öppna App Paths"));
}

TEST_F(RegistrationDiagnosis, StaleSettingIsAFaultAndIsNotCleared) {
  PutSetting(u"C:\\Gone\\Link.exe");
  EXPECT_EQ(Problems(), Ids{"link-program fault"});
  EXPECT_THAT(TextOf(u"link-program"), HasSubstr("C:\\Gone\\Link.exe, som inte finns"));
}

TEST_F(RegistrationDiagnosis, ProgramStartedInsteadBecauseOfABlankIsAFault) {
  registry.SetText(kMachine, LinkKey(), u"Path", u"C:\\Program Files\\Link");
  files.lengths[u"C:\\Program Files\\Link\\Link.exe"] = 1;
  EXPECT_EQ(Problems(), Ids{});
  files.lengths[u"C:\\Program.exe"] = 1;
  EXPECT_EQ(Problems(), Ids{"link-program fault"});
  EXPECT_THAT(TextOf(u"link-program"), HasSubstr("startar C:\\Program.exe i stället"));
}

}  // namespace
}  // namespace diagnosis_test
