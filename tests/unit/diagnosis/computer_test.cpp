// A healthy computer has no finding; a broken one exactly its own.
#include <gmock/gmock.h>

#include "diagnosis/core/checks.h"
#include "unit/diagnosis/fixture.h"

namespace diagnosis_test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

using ComputerDiagnosis = DiagnosisTest;

TEST_F(ComputerDiagnosis, HealthyComputerHasEveryLineAndNoFinding) {
  const Findings findings = Diagnose();
  EXPECT_EQ(Problems(findings), Ids{});
  // All but the two of the database, in their order.
  ASSERT_EQ(findings.size(), diagnosis::checks::kAll.size() - 2);
  for (std::size_t i = 0; i < findings.size(); ++i) {
    EXPECT_EQ(findings[i].check.id, diagnosis::checks::kAll.at(i).id);
  }
}

TEST_F(ComputerDiagnosis, ShowsNoBox) {
  registry.DenyWrite(kMachine, Key(0));
  Diagnose();
  EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(ComputerDiagnosis, WindowsBeforeSevenIsAFault) {
  computer.version.major = 6;
  EXPECT_EQ(Problems(), Ids{"windows fault"});
  computer.version.minor = 1;
  EXPECT_EQ(Problems(), Ids{});
}

TEST_F(ComputerDiagnosis, ProcessOfSixtyFourBitsIsAFault) {
  computer.version.processBits = 64;
  EXPECT_EQ(Problems(), Ids{"windows fault"});
}

TEST_F(ComputerDiagnosis, EachVersionOfWindowsHasItsName) {
  EXPECT_THAT(TextOf(u"windows"), HasSubstr("Windows 10 (10.0.19045), 64-bitars"));
  computer.version.build = 22631;
  EXPECT_THAT(TextOf(u"windows"), HasSubstr("Windows 11 ("));
  computer.version.server = true;
  EXPECT_THAT(TextOf(u"windows"), HasSubstr("Windows Server ("));
  for (const auto& [minor, name] :
       {std::pair(1U, "Windows 7 "), std::pair(2U, "Windows 8 "), std::pair(3U, "Windows 8.1 ")}) {
    computer.version = {.major = 6, .minor = minor, .build = 1, .bits = 32, .processBits = 32};
    EXPECT_THAT(TextOf(u"windows"), HasSubstr(name));
  }
}

TEST_F(ComputerDiagnosis, UnregisteredComponentIsAFault) {
  computer.registrations.clear();
  EXPECT_EQ(Problems(), Ids{"component fault"});
}

TEST_F(ComputerDiagnosis, MissingDllIsAFaultAndHasNoVersion) {
  computer.component = {};
  EXPECT_EQ(Problems(), Ids{"component fault"});
  EXPECT_EQ(TextOf(u"component-version"), "(no such line)");
}

TEST_F(ComputerDiagnosis, DllOfSixtyFourBitsIsAFault) {
  computer.component.bits = 64;
  EXPECT_EQ(Problems(), Ids{"component fault"});
}

TEST_F(ComputerDiagnosis, HostOfSixtyFourBitsIsAFault) {
  EXPECT_EQ(TextOf(u"host-program"), "C:\\Kestra\\Kestra.Main.exe är ett 32-bitarsprogram.");
  computer.host.bits = 64;
  EXPECT_EQ(Problems(), Ids{"host-program fault"});
  computer.host = {};
  EXPECT_EQ(Problems(), Ids{});
  EXPECT_THAT(TextOf(u"host-program"), HasSubstr("inte undersökt"));
}

TEST_F(ComputerDiagnosis, UnexpectedErrorCostsOneLineAndNotTheReport) {
  const std::size_t lines = Diagnose().size();
  computer.failsUnexpectedly = true;
  EXPECT_EQ(Problems(), Ids{"notification-windows warning"});
  EXPECT_EQ(TextOf(u"notification-windows"), "Kontrollen kunde inte slutföras: oväntat");
  EXPECT_EQ(Diagnose().size(), lines);
}

TEST_F(ComputerDiagnosis, UsersOwnRegistrationIsAWarningThatNamesBoth) {
  computer.registrations.insert(computer.registrations.begin(),
                                {diagnosis::Origin::User, u"C:\\Anna\\Vilnor.dll"});
  EXPECT_EQ(Problems(), Ids{"component warning"});
  EXPECT_THAT(TextOf(u"component"), HasSubstr("användarens egen registrering: "
                                              "C:\\Anna\\Vilnor.dll; datorns registrering: "
                                              "C:\\Vilnor\\1.5\\Vilnor.dll"));
}

TEST_F(ComputerDiagnosis, HostsManifestIsNamed) {
  computer.registrations = {{diagnosis::Origin::HostManifest, u"C:\\Kestra\\Vilnor.dll"}};
  EXPECT_EQ(Problems(), Ids{});
  EXPECT_THAT(TextOf(u"component"), HasSubstr("Kestra Dentals manifest: C:\\Kestra\\Vilnor.dll"));
  EXPECT_EQ(computer.askedPrograms, (std::vector<std::u16string>{u"C:\\Kestra\\Kestra.Main.exe",
                                                                 u"C:\\Kestra\\Kestra.Main.exe",
                                                                 u"C:\\Kestra\\Kestra32.exe"}));
}

TEST_F(ComputerDiagnosis, AnotherOrNoVersionIsAWarning) {
  computer.component.version = u"1.5.0.0";
  EXPECT_EQ(Problems(), Ids{"component-version warning"});
  computer.component.version.clear();
  EXPECT_EQ(Problems(), Ids{"component-version warning"});
}

TEST_F(ComputerDiagnosis, SignatureIsJudgedByTheProgramsOwn) {
  using diagnosis::Signature;
  computer.component.signature = Signature::Broken;
  EXPECT_EQ(Problems(), Ids{"component-signature fault"});
  computer.component.signature = Signature::Untrusted;
  EXPECT_EQ(Problems(), Ids{"component-signature warning"});
  computer.component.signature = Signature::None;
  EXPECT_EQ(Problems(), Ids{"component-signature warning"});
  computer.own.signature = Signature::None;
  EXPECT_EQ(Problems(), Ids{});
}

TEST_F(ComputerDiagnosis, MissingPartsOfWindowsAreFaults) {
  database.installed = false;
  EXPECT_EQ(Problems(), Ids{"ado fault"});
  EXPECT_THAT(TextOf(u"ado"), HasSubstr("429"));
}

TEST_F(ComputerDiagnosis, MissingParserIsAFault) {
  documents.fails = true;
  EXPECT_EQ(Problems(), Ids{"msxml fault"});
}

TEST_F(ComputerDiagnosis, TwoProgramsWithNotificationWindowsAreAWarning) {
  computer.windows = {{u"Kestra.Main.exe", 1}, {u"Kestra.Main.exe", 1}};
  EXPECT_EQ(Problems(), Ids{});
  computer.windows.push_back({u"Kestra32.exe", 2});
  EXPECT_EQ(Problems(), Ids{"notification-windows warning"});
  EXPECT_THAT(TextOf(u"notification-windows"),
              HasSubstr("3 fönster tar emot svar: Kestra.Main.exe, Kestra32.exe."));
  computer.windows.clear();
  EXPECT_EQ(Problems(), Ids{});
}

TEST_F(ComputerDiagnosis, DateFormatIsTheComponentsOwnReading) {
  EXPECT_EQ(TextOf(u"date-format"), "Kort datumformat är yyyy-MM-dd.");
  locale.shortDateAnswer = u"yy-MM-dd";
  EXPECT_EQ(TextOf(u"date-format"), "Kort datumformat är YYYY-MM-dd.");
  locale.shortDateAnswer = u"d MMM yyyy";
  EXPECT_EQ(Problems(), Ids{"date-format warning"});
  locale.shortDateAnswer = u"ddd yyyy-MM-dd";
  EXPECT_EQ(Problems(), Ids{"date-format warning"});
}

TEST_F(ComputerDiagnosis, UnusualDecimalSignIsAWarning) {
  EXPECT_EQ(TextOf(u"decimal-sign"), "Decimaltecknet är \",\".");
  locale.regional.decimalSeparator = u'.';
  EXPECT_EQ(Problems(), Ids{});
  locale.regional.decimalSeparator = u'\'';
  EXPECT_EQ(Problems(), Ids{"decimal-sign warning"});
}

}  // namespace
}  // namespace diagnosis_test
