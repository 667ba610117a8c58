// The parts of the diagnosis. Each appends its lines to the findings; the calling thread uses the
// surroundings' platform.
#pragma once

#include <string>

#include "diagnosis/core/diagnosis.h"

namespace diagnosis {

// The exchange folder as the component finds it.
struct ExchangeFolder {
  // "" if no registration leads to one.
  std::u16string path;
  bool isThere = false;
  // Whether it is there, or the component would try to create it.
  bool usable = false;
  // The texts of the boxes that the component shows while looking for it.
  std::u16string box;
};

void ExamineWindows(Surroundings surroundings, Findings& findings);
void ExamineComponent(Surroundings surroundings, Findings& findings);
void ExamineParts(Surroundings surroundings, Findings& findings);
ExchangeFolder ExamineHostRegistrations(Surroundings surroundings, Findings& findings);
void ExamineHostProgram(Surroundings surroundings, Findings& findings);
void ExamineLinkProgram(Surroundings surroundings, Findings& findings);
void ExamineExchangeFolder(Surroundings surroundings, const ExchangeFolder& folder,
                           Findings& findings);
void ExamineWaitingFiles(Surroundings surroundings, const std::u16string& folder,
                         Findings& findings);
void ExamineNotificationWindows(Surroundings surroundings, Findings& findings);
void ExamineRegionalSettings(Surroundings surroundings, Findings& findings);

}  // namespace diagnosis
