// A report for people and for programs.
#pragma once

#include <string>

#include "diagnosis/core/finding.h"

namespace diagnosis {

struct Report {
  // Of this program.
  std::u16string version;
  // "2026-11-16 14:05".
  std::u16string time;
  Findings findings;
};

// The worst of the findings.
State Worst(const Findings& findings);

// "OK", "Varning", "FEL".
std::u16string NameOf(State state);

// Faults first, then warnings; otherwise in their order.
Findings Sorted(Findings findings);

// Lines end with CR LF.
std::u16string AsText(const Report& report);
// One object; docs/vilnorcheck.md describes it.
std::u16string AsJson(const Report& report);

// "2 fel, 1 varning".
std::u16string Summary(const Findings& findings);

}  // namespace diagnosis
