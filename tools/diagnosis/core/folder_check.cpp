// The exchange folder: whether it is there, and where it lies.
#include <algorithm>

#include "automation/text.h"
#include "diagnosis/core/checks.h"
#include "diagnosis/core/parts.h"

namespace diagnosis {
namespace {

std::u16string ParentOf(const std::u16string& path) {
  return path.substr(0, path.rfind(u'\\') + 1);
}

Finding Presence(Computer& computer, const ExchangeFolder& folder) {
  const Check& check = checks::kExchangeFolder;
  if (folder.isThere) {
    return {check, State::Fine, folder.path, {}};
  }
  const std::u16string missing = folder.path + u" finns inte";
  if (!folder.usable) {
    return {
        check, State::Fault,
        missing + u" och kan inte skapas. Vilnor visar: \"" + folder.box + u"\"",
        u"Kontrollera att Path i Kestra Dentals registrering pekar på en mapp som finns och som "
        u"användaren når."};
  }
  if (!computer.ExamineFolder(ParentOf(folder.path)).mayAddFolders) {
    return {check, State::Fault, missing + u", och användaren får inte skapa den.",
            u"Skapa mappen och ge användarnas grupp rätt att läsa, skapa, ändra och ta bort filer, "
            u"eller installera Vilnor med EXCHANGEGROUP."};
  }
  return {check, State::Warning, missing + u". Vilnor skapar den vid första begäran.",
          u"Det är som det ska på en ny dator. Annars: kontrollera att Path pekar på den mapp som "
          u"Kestra Dental används från."};
}

Finding Rights(const FolderFacts& facts) {
  const Check& check = checks::kExchangeRights;
  if (facts.mayRead && facts.mayAddFiles) {
    return {check, State::Fine, u"Användaren får läsa mappen och skapa filer i den.", {}};
  }
  const std::u16string what = facts.mayRead ? u"skapa filer i" : u"läsa";
  return {check, State::Fault, u"Användaren får inte " + what + u" mappen.",
          u"Ge användarnas grupp rätt att läsa, skapa, ändra och ta bort filer i mappen."};
}

Finding Blanks(const std::u16string& path) {
  const Check& check = checks::kExchangeBlanks;
  if (path.find(u' ') == std::u16string::npos) {
    return {check, State::Fine, u"Sökvägen har inga blanksteg.", {}};
  }
  return {check, State::Warning,
          u"Sökvägen har blanksteg. Vilnor sätter den inom citattecken när Vilnor Link startas.",
          u"Gör inget om ärenden fungerar. Öppnas Vilnor Link utan ärende: flytta Kestra Dental "
          u"till en mapp utan blanksteg."};
}

Finding Drive(const FolderFacts& facts) {
  const Check& check = checks::kExchangeDrive;
  if (!facts.onNetwork) {
    return {check, State::Fine, u"Mappen ligger på datorns egen disk.", {}};
  }
  return {check, State::Warning,
          u"Mappen ligger på nätverket. Bryts anslutningen kan svar inte läsas, och arbetsplatser "
          u"som delar mappen kan ta varandras svar.",
          u"Registrera Kestra Dental med en mapp på datorns egen disk, eller låt bara en "
          u"arbetsplats i taget arbeta med samma patient."};
}

Finding Twin(const FolderFacts& facts) {
  const Check& check = checks::kExchangeTwin;
  if (facts.twin.empty()) {
    return {check, State::Fine, u"Windows har inte omdirigerat mappen (VirtualStore).", {}};
  }
  return {check, State::Warning,
          u"Windows har omdirigerat filer till " + facts.twin +
              u". Vilnor och Vilnor Link kan se var sin mapp.",
          u"Ge användarnas grupp rätt att ändra i den riktiga mappen. Flytta sedan filerna dit "
          u"från dubbletten när Kestra Dental är stängt, och ta bort dubbletten."};
}

}  // namespace

void ExamineExchangeFolder(Surroundings surroundings, const ExchangeFolder& folder,
                           Findings& findings) {
  findings.push_back(Presence(surroundings.computer, folder));
  const FolderFacts facts = surroundings.computer.ExamineFolder(folder.path);
  if (folder.isThere) {
    findings.push_back(Rights(facts));
  }
  if (folder.usable) {
    findings.push_back(Blanks(folder.path));
    findings.push_back(Drive(facts));
    findings.push_back(Twin(facts));
  }
}

}  // namespace diagnosis
