// Link.exe, found by the component itself.
#include <optional>
#include <string>

#include "diagnosis/core/checks.h"
#include "diagnosis/core/host_programs.h"
#include "diagnosis/core/parts.h"
#include "diagnosis/core/rehearsal.h"
#include "host/link_program.h"
#include "platform/files.h"

namespace diagnosis {
namespace {

constexpr const char16_t* kAdvice =
    u"Installera om Vilnor Link, eller ange sökvägen i Kestra Dental under "
    u"Verktyg/Inställningar - Denna arbetsplats/Generellt.";

std::u16string SourceOf(platform::Platform& platform) {
  const RegisteredKey key = ReadRegisteredKey(platform, host::kLinkRegistration);
  if (!key.path.empty()) {
    return u"datorns registrering (App Paths)";
  }
  return key.refusal && !key.missing
             ? u"användarens inställning (användaren får inte öppna App Paths\\Link.exe)"
             : u"användarens inställning";
}

bool IsFile(platform::Files& files, const std::u16string& path) {
  return files.StampOf(path).Exists() && !files.FolderExists(path);
}

// The component does not quote the program's path, so the system first tries the path up to each
// blank: the program that it would start instead, or "".
std::u16string StartedInstead(platform::Files& files, const std::u16string& path) {
  for (std::size_t end = path.find(u' '); end != std::u16string::npos;
       end = path.find(u' ', end + 1)) {
    const std::u16string front = path.substr(0, end);
    for (const std::u16string& candidate : {front, front + u".exe"}) {
      if (IsFile(files, candidate)) {
        return candidate;
      }
    }
  }
  return {};
}

// What the component does when it looks for the program.
struct Search {
  std::optional<std::u16string> path;
  bool clearsSetting = false;
  std::u16string boxes;
};

Search LookForProgram(platform::Platform& platform) {
  const Rehearsal rehearsal(platform);
  Search search;
  search.path = host::GetVilnorCommandLine();
  search.clearsSetting = rehearsal.settings().wouldSave();
  search.boxes = rehearsal.Boxes();
  return search;
}

Finding MissingProgram(const std::u16string& boxes) {
  return {checks::kLinkProgram, State::Fault,
          u"Link.exe är inte registrerad, och användarens inställning pekar inte ut någon. Vilnor "
          u"visar: \"" +
              boxes + u"\"",
          kAdvice};
}

// The component clears a setting whose file is gone, and still tries to start the program.
Finding StaleSetting(const std::u16string& path) {
  return {checks::kLinkProgram, State::Fault,
          u"Användarens inställning pekar på " + path +
              u", som inte finns. Vilnor tömmer inställningen vid nästa försök.",
          kAdvice};
}

Finding FoundProgram(platform::Platform& platform, const std::u16string& path) {
  const std::u16string found = path + u", enligt " + SourceOf(platform);
  if (!IsFile(platform.files, path)) {
    return {checks::kLinkProgram, State::Fault, found + u", finns inte eller kan inte läsas.",
            kAdvice};
  }
  const std::u16string instead = StartedInstead(platform.files, path);
  if (!instead.empty()) {
    return {
        checks::kLinkProgram, State::Fault,
        found + u". Windows startar " + instead + u" i stället, eftersom sökvägen har blanksteg.",
        u"Byt namn på " + instead + u" eller ta bort den."};
  }
  return {checks::kLinkProgram, State::Fine, found, {}};
}

}  // namespace

void ExamineLinkProgram(Surroundings surroundings, Findings& findings) {
  const Search search = LookForProgram(surroundings.platform);
  if (!search.path) {
    findings.push_back(MissingProgram(search.boxes));
  } else if (search.clearsSetting) {
    findings.push_back(StaleSetting(*search.path));
  } else {
    findings.push_back(FoundProgram(surroundings.platform, *search.path));
  }
}

}  // namespace diagnosis
