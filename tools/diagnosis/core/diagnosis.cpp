#include "diagnosis/core/diagnosis.h"

#include "diagnosis/core/parts.h"

namespace diagnosis {

Findings Diagnose(Surroundings surroundings) {
  Findings findings;
  ExamineWindows(surroundings, findings);
  ExamineComponent(surroundings, findings);
  ExamineParts(surroundings, findings);
  const ExchangeFolder folder = ExamineHostRegistrations(surroundings, findings);
  ExamineLinkProgram(surroundings, findings);
  if (!folder.path.empty()) {
    ExamineExchangeFolder(surroundings, folder, findings);
  }
  if (folder.isThere) {
    ExamineWaitingFiles(surroundings, folder.path, findings);
  }
  ExamineNotificationWindows(surroundings, findings);
  ExamineRegionalSettings(surroundings, findings);
  return findings;
}

}  // namespace diagnosis
