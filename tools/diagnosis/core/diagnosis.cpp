#include "diagnosis/core/diagnosis.h"

#include <exception>

#include "automation/text.h"
#include "diagnosis/core/checks.h"
#include "diagnosis/core/parts.h"

namespace diagnosis {
namespace {

// An error that a part does not expect costs a line, not the report.
template <class Part>
void Examine(const Check& check, Findings& findings, Part part) {
  try {
    part();
  } catch (const std::exception& error) {
    findings.push_back({check, State::Warning,
                        u"Kontrollen kunde inte slutföras: " + automation::FromUtf8(error.what()),
                        u"Kör VilnorCheck igen. Skicka annars rapporten till leverantören."});
  }
}

}  // namespace

Findings Diagnose(Surroundings surroundings) {
  Findings findings;
  ExchangeFolder folder;
  const auto examine = [&](const Check& check, auto part) {
    Examine(check, findings, [&] { part(surroundings, findings); });
  };
  examine(checks::kWindows, ExamineWindows);
  examine(checks::kComponent, ExamineComponent);
  examine(checks::kAdo, ExamineParts);
  Examine(checks::kHostRegistration, findings,
          [&] { folder = ExamineHostRegistrations(surroundings, findings); });
  examine(checks::kHostProgram, ExamineHostProgram);
  examine(checks::kLinkProgram, ExamineLinkProgram);
  if (!folder.path.empty()) {
    Examine(checks::kExchangeFolder, findings,
            [&] { ExamineExchangeFolder(surroundings, folder, findings); });
  }
  if (folder.isThere) {
    Examine(checks::kUnreadResults, findings,
            [&] { ExamineWaitingFiles(surroundings, folder.path, findings); });
  }
  examine(checks::kNotificationWindows, ExamineNotificationWindows);
  examine(checks::kDateFormat, ExamineRegionalSettings);
  return findings;
}

}  // namespace diagnosis
