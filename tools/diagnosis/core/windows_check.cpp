// Windows itself, the parts of it that the component uses, the user's settings, and who listens.
#include <algorithm>
#include <set>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "diagnosis/core/checks.h"
#include "diagnosis/core/parts.h"
#include "diagnosis/core/rehearsal.h"
#include "exchange/envelope.h"
#include "platform/database.h"
#include "platform/locale.h"
#include "platform/result_document.h"
#include "util/date_format.h"

namespace diagnosis {
namespace {

using automation::Decimal10;

constexpr std::uint32_t kFirstBuildOfWindows11 = 22000;

std::u16string NameOf(const WindowsVersion& version) {
  if (version.server) {
    return u"Windows Server";
  }
  if (version.major >= 10) {
    return version.build >= kFirstBuildOfWindows11 ? u"Windows 11" : u"Windows 10";
  }
  if (version.major == 6 && version.minor >= 1) {
    return version.minor == 1 ? u"Windows 7" : version.minor == 2 ? u"Windows 8" : u"Windows 8.1";
  }
  return u"Windows";
}

bool IsSupported(const WindowsVersion& version) {
  return version.major > 6 || (version.major == 6 && version.minor >= 1);
}

// Whether `create` succeeds; if not, its error.
template <class Create>
void ExaminePart(const Check& check, Create create, const std::u16string& advice,
                 Findings& findings) {
  const std::u16string title(check.title);
  try {
    create();
    findings.push_back({check, State::Fine, title + u" kan användas.", {}});
  } catch (const automation::AutomationError& error) {
    findings.push_back({check, State::Fault,
                        title + u" kan inte skapas: fel " + Decimal10(error.number()) + u", " +
                            error.description(),
                        advice});
  }
}

// A picture with a month's or weekday's name; the component reads numbers only.
bool HasNames(const std::u16string& picture) {
  const std::u16string upper = automation::UCase(picture);
  return upper.find(u"MMM") != std::u16string::npos || upper.find(u"DDD") != std::u16string::npos;
}

}  // namespace

void ExamineWindows(Surroundings surroundings, Findings& findings) {
  const WindowsVersion version = surroundings.computer.Version();
  std::u16string text = NameOf(version) + u" (" + Decimal10(version.major) + u"." +
                        Decimal10(version.minor) + u"." + Decimal10(version.build) + u"), " +
                        Decimal10(version.bits) + u"-bitars. VilnorCheck är ett " +
                        Decimal10(version.processBits) + u"-bitarsprogram.";
  if (!IsSupported(version)) {
    findings.push_back({checks::kWindows, State::Fault, text + u" Vilnor kräver Windows 7.",
                        u"Flytta Kestra Dental till en dator med Windows 7 eller senare."});
  } else if (version.processBits != 32) {
    findings.push_back({checks::kWindows, State::Fault,
                        text + u" Den ser en annan del av registret.",
                        u"Kör den VilnorCheck.exe som följer med utgåvan."});
  } else {
    findings.push_back({checks::kWindows, State::Fine, text, {}});
  }
}

void ExamineParts(Surroundings surroundings, Findings& findings) {
  auto& platform = surroundings.platform;
  ExaminePart(
      checks::kAdo,
      [&] {
        platform.database.NewConnection();
        platform.database.NewRecordset();
      },
      u"ADO är en del av Windows. Kör \"sfc /scannow\" som administratör och starta om datorn.",
      findings);
  ExaminePart(
      checks::kMsxml, [&] { platform.resultDocuments.New(); },
      u"MSXML 3 är en del av Windows. Kör \"sfc /scannow\" som administratör och starta om datorn.",
      findings);
}

void ExamineNotificationWindows(Surroundings surroundings, Findings& findings) {
  const auto owners = surroundings.computer.WindowsOfClass(exchange::kNotificationClass);
  std::set<std::uint32_t> processes;
  std::u16string programs;
  for (const auto& owner : owners) {
    if (processes.insert(owner.process).second) {
      programs += (programs.empty() ? u"" : u", ") + owner.program;
    }
  }
  const Check& check = checks::kNotificationWindows;
  if (owners.empty()) {
    findings.push_back({check,
                        State::Fine,
                        u"Inget program tar emot svar från Vilnor Link just nu: Kestra Dental är "
                        u"inte igång, eller har inte använt Vilnor än.",
                        {}});
    return;
  }
  const std::u16string text = Decimal10(static_cast<std::int64_t>(owners.size())) +
                              u" fönster tar emot svar: " + programs + u".";
  if (processes.size() == 1) {
    findings.push_back({check, State::Fine, text, {}});
  } else {
    findings.push_back(
        {check, State::Warning,
         text + u" Vilnor Link meddelar bara ett av programmen, kanske inte det som "
                u"skickade begäran.",
         u"Stäng alla utom ett, och låt bara ett program använda Vilnor åt gången."});
  }
}

void ExamineRegionalSettings(Surroundings surroundings, Findings& findings) {
  const Rehearsal rehearsal(surroundings.platform);
  const std::u16string picture = util::GetLanguageDateFormat();
  if (HasNames(picture)) {
    findings.push_back(
        {checks::kDateFormat, State::Warning,
         u"Kort datumformat är " + picture +
             u". Vilnor läser inte namn på månader och veckodagar: datum kan bli fel.",
         u"Välj ett kort datumformat med siffror, till exempel ÅÅÅÅ-MM-DD, i Windows "
         u"inställningar för region, och starta om Kestra Dental."});
  } else {
    findings.push_back(
        {checks::kDateFormat, State::Fine, u"Kort datumformat är " + picture + u".", {}});
  }
  const char16_t sign = surroundings.platform.locale.Regional().decimalSeparator;
  const std::u16string text = std::u16string(u"Decimaltecknet är \"") + sign + u"\".";
  if (sign == u',' || sign == u'.') {
    findings.push_back({checks::kDecimalSign, State::Fine, text, {}});
  } else {
    findings.push_back({checks::kDecimalSign, State::Warning, text + u" Belopp kan tolkas fel.",
                        u"Välj komma som decimaltecken i Windows inställningar för region, och "
                        u"starta om Kestra Dental."});
  }
}

}  // namespace diagnosis
