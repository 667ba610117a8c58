// The keys under which the host may have registered its folder, and the exchange folder that
// follows from them.
#include <cstddef>

#include "automation/text.h"
#include "diagnosis/core/checks.h"
#include "diagnosis/core/host_programs.h"
#include "diagnosis/core/parts.h"
#include "diagnosis/core/rehearsal.h"
#include "host/link_program.h"
#include "platform/registry_api.h"
#include "registry/c_registry.h"

namespace diagnosis {
namespace {

using automation::Decimal10;
using platform::RegistryApi;

constexpr std::uint32_t kRightToReadValues = 0x01;

std::u16string FullName(std::u16string_view keyPath) {
  return u"HKLM\\" + std::u16string(keyPath);
}

bool EnumeratesPath(RegistryApi& registry, RegistryApi::Key key) {
  RegistryApi::Limits limits;
  if (registry.QueryLimits(key, limits) != RegistryApi::kSuccess) {
    return false;
  }
  RegistryApi::ValueEntry entry;
  for (std::uint32_t index = 0;
       registry.EnumValue(key, index, limits, entry) == RegistryApi::kSuccess; ++index) {
    if (automation::EqualsNoCase(entry.name, host::kRegisteredValue)) {
      return true;
    }
  }
  return false;
}

// Whether the key has the value, of whatever type and wherever it stands.
bool HasPathOfAnyKind(RegistryApi& registry, std::u16string_view keyPath) {
  RegistryApi::Key key = 0;
  if (registry.OpenKey(registry::kLocalMachine, std::u16string(keyPath), kRightToReadValues, key) !=
      RegistryApi::kSuccess) {
    return false;
  }
  const bool has = EnumeratesPath(registry, key);
  registry.CloseKey(key);
  return has;
}

Finding RefusedKey(const Check& check, const std::u16string& name, const RegisteredKey& key) {
  const std::u16string what =
      key.missing ? u" saknas, och användaren får inte skapa den: "
                  : u": användaren får inte öppna nyckeln för både läsning och skrivning: ";
  return {check, State::Fault,
          name + what + Decimal10(key.refusal->number()) + u" " + key.refusal->description() +
              u". Vilnor läser inte nästa nyckel och visar en ruta med det felet.",
          key.missing
              ? u"Låt en administratör skapa nyckeln med värdet Path, eller installera Vilnor med "
                u"HOSTPATH och EXCHANGEGROUP."
              : u"Ge användarnas grupp rättigheterna Fråga efter värde, Ange värde, Skapa "
                u"undernyckel, Räkna upp undernycklar, Meddela och Skapa länk på nyckeln."};
}

Finding KeyWithoutPath(platform::Platform& platform, const Check& check,
                       std::u16string_view keyPath, const RegisteredKey& key) {
  const std::u16string name = FullName(keyPath);
  if (key.missing) {
    return {check, State::Fine, name + u" saknas. Vilnor skapar den tom och läser nästa.", {}};
  }
  if (HasPathOfAnyKind(platform.registry, keyPath)) {
    return {check, State::Warning,
            name +
                u" har ett Path som Vilnor inte ser: det är inte av typen REG_SZ, eller står "
                u"efter ett värde av annan typ.",
            u"Exportera nyckeln, ta bort den och skriv den på nytt med Path (REG_SZ) först."};
  }
  return {check, State::Fine, name + u" har inget Path. Vilnor läser nästa.", {}};
}

// Appends the line of a key and returns what it holds.
RegisteredKey ExamineKey(platform::Platform& platform, std::size_t number, Findings& findings) {
  const std::u16string_view keyPath = host::kHostRegistrations.at(number);
  const Check& check = checks::kHostKeys.at(number);
  RegisteredKey key = ReadRegisteredKey(platform, keyPath);
  if (key.refusal) {
    findings.push_back(RefusedKey(check, FullName(keyPath), key));
  } else if (key.path.empty()) {
    findings.push_back(KeyWithoutPath(platform, check, keyPath, key));
  } else {
    findings.push_back(
        {check, State::Fine, FullName(keyPath) + u" gäller: Path är " + key.path, {}});
  }
  return key;
}

// The last key that the component reads.
RegisteredKey ExamineKeys(platform::Platform& platform, Findings& findings) {
  RegisteredKey last;
  for (std::size_t number = 0; number < host::kHostRegistrations.size(); ++number) {
    if (last.path.empty() && !last.refusal) {
      last = ExamineKey(platform, number, findings);
    } else {
      findings.push_back({checks::kHostKeys.at(number),
                          State::Fine,
                          FullName(host::kHostRegistrations.at(number)) +
                              u" läses inte: Vilnor stannar vid en tidigare nyckel.",
                          {}});
    }
  }
  return last;
}

Finding RegisteredFolder(const std::u16string& path, const std::u16string& exchangeFolder) {
  const Check& check = checks::kHostRegistration;
  if (path.ends_with(u'\\')) {
    return {check, State::Fine, u"Registrerat i " + path, {}};
  }
  return {check, State::Warning,
          u"Registrerat i " + path +
              u", utan omvänt snedstreck på slutet. Utbytesmappen blir därför " + exchangeFolder +
              u".",
          u"Stäng Kestra Dental, lägg till ett omvänt snedstreck sist i Path och flytta sedan "
          u"resultat som väntar till den nya mappen."};
}

}  // namespace

ExchangeFolder ExamineHostRegistrations(Surroundings surroundings, Findings& findings) {
  const RegisteredKey key = ExamineKeys(surroundings.platform, findings);
  const Rehearsal rehearsal(surroundings.platform);
  ExchangeFolder folder;
  folder.usable = !host::GetVilnorOutputPath().Failed();
  folder.box = rehearsal.Boxes();
  folder.path = rehearsal.files().asked();
  folder.isThere = folder.usable && rehearsal.files().created().empty();
  if (!folder.path.empty()) {
    findings.push_back(RegisteredFolder(key.path, folder.path));
  } else if (!key.refusal) {
    findings.push_back({checks::kHostRegistration, State::Fault,
                        u"Kestra Dental är inte registrerat på den här datorn. Vilnor visar: \"" +
                            folder.box + u"\"",
                        u"Installera om Kestra Dental, eller installera Vilnor med HOSTPATH och "
                        u"EXCHANGEGROUP."});
  }
  return folder;
}

}  // namespace diagnosis
