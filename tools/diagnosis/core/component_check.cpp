// Which Vilnor.dll the host gets, and whether it is the right one.
#include "automation/text.h"
#include "diagnosis/core/checks.h"
#include "diagnosis/core/host_programs.h"
#include "diagnosis/core/parts.h"

namespace diagnosis {
namespace {

constexpr const char16_t* kRepair =
    u"Reparera installationen som administratör: msiexec /i Vilnor-1.5.N.msi /qn REINSTALL=ALL "
    u"REINSTALLMODE=amus";

std::u16string NameOf(Origin origin) {
  switch (origin) {
    case Origin::HostManifest:
      return u"Kestra Dentals manifest";
    case Origin::User:
      return u"användarens egen registrering";
    case Origin::Machine:
      break;
  }
  return u"datorns registrering";
}

std::u16string ListOf(const std::vector<ClassRegistration>& registrations) {
  std::u16string list;
  for (const auto& each : registrations) {
    list += (list.empty() ? u"" : u"; ") + NameOf(each.origin) + u": " +
            (each.path.empty() ? std::u16string(u"ingen fil") : each.path);
  }
  return list;
}

void ExamineVersion(const ProgramFile& component, const ProgramFile& own, Findings& findings) {
  const Check& check = checks::kComponentVersion;
  if (component.version.empty()) {
    findings.push_back({check, State::Warning,
                        u"Filen saknar version och kommer inte från en utgåva av Vilnor.",
                        kRepair});
  } else if (component.version != own.version) {
    findings.push_back({check, State::Warning,
                        u"Vilnor.dll har version " + component.version +
                            u", VilnorCheck.exe version " + own.version +
                            u". De kontrolleras efter olika regler.",
                        u"Kör den VilnorCheck.exe som hör till samma utgåva som Vilnor.dll, eller "
                        u"uppgradera Vilnor."});
  } else {
    findings.push_back({check, State::Fine, u"Version " + component.version + u".", {}});
  }
}

// All files of a release are signed, or none is.
void ExamineSignature(const ProgramFile& component, const ProgramFile& own, Findings& findings) {
  const Check& check = checks::kComponentSignature;
  switch (component.signature) {
    case Signature::Good:
      findings.push_back({check, State::Fine, u"Signaturen är giltig.", {}});
      return;
    case Signature::Broken:
      findings.push_back({check, State::Fault,
                          u"Signaturen stämmer inte: filen har ändrats sedan den gavs ut.",
                          std::u16string(u"Undersök datorn med ett virusskydd. ") + kRepair});
      return;
    case Signature::Untrusted:
      findings.push_back({check, State::Warning,
                          u"Filen är signerad, men datorn litar inte på certifikatet.",
                          u"Kontrollera datorns klocka och att Windows kan uppdatera sina "
                          u"rotcertifikat. Virusskydd kan annars stoppa filen."});
      return;
    case Signature::None:
      break;
  }
  if (own.signature == Signature::None) {
    findings.push_back(
        {check, State::Fine, u"Utgåvan är inte signerad (inte heller VilnorCheck.exe).", {}});
  } else {
    findings.push_back(
        {check, State::Warning, u"Filen är inte signerad, men det är VilnorCheck.exe.", kRepair});
  }
}

// Nothing if it cannot be used.
bool ExamineFile(const std::vector<ClassRegistration>& registrations, const ProgramFile& file,
                 Findings& findings) {
  const Check& check = checks::kComponent;
  const std::u16string list = ListOf(registrations);
  if (!file.exists) {
    findings.push_back({check, State::Fault, u"Filen som ska svara finns inte. " + list, kRepair});
  } else if (file.bits != 32) {
    findings.push_back(
        {check, State::Fault, u"Filen som ska svara är inget 32-bitarsprogram. " + list, kRepair});
  } else if (registrations.front().origin == Origin::User) {
    findings.push_back({check, State::Warning,
                        u"Bara den här användaren får denna Vilnor.dll, och inte när programmet "
                        u"körs som administratör. " +
                            list,
                        u"Avregistrera användarens kopia (regsvr32 /u) och installera Vilnor för "
                        u"alla användare."});
  } else {
    findings.push_back({check, State::Fine, u"Svarar enligt " + list, {}});
  }
  return file.exists && file.bits == 32;
}

}  // namespace

void ExamineComponent(Surroundings surroundings, Findings& findings) {
  Computer& computer = surroundings.computer;
  const auto registrations = computer.Registrations(HostPrograms(surroundings.platform));
  if (registrations.empty()) {
    findings.push_back({checks::kComponent, State::Fault,
                        u"Ingen Vilnor.dll är registrerad för Vilnor.BVilnor.",
                        u"Installera Vilnor som administratör: msiexec /i Vilnor-1.5.N.msi /qn"});
    return;
  }
  const ProgramFile file = computer.Examine(registrations.front().path);
  if (ExamineFile(registrations, file, findings)) {
    const ProgramFile own = computer.Examine(computer.OwnPath());
    ExamineVersion(file, own, findings);
    ExamineSignature(file, own, findings);
  }
}

}  // namespace diagnosis
