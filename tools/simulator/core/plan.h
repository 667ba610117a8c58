// The plan for running the simulator unattended.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/core/answer.h"

namespace simulator {

struct Plan {
  Outcome outcome = Outcome::Sent;
  // Fields that the plan does not set have the defaults of answer.h.
  std::optional<std::u16string> caseId;
  std::optional<std::u16string> userName;
  std::optional<std::u16string> cancelled;
  std::optional<std::u16string> status;
  // Folder for copies of the request, the result and the command line; empty for none.
  std::u16string keepFolder;
  // Log file, one line per action; empty for none.
  std::u16string logFile;
  // How long to look for the host's window.
  std::chrono::milliseconds wait{5000};
  // The errors found, one sentence each (Swedish); empty for a valid plan.
  std::vector<std::u16string> problems;
};

// Reads "key=value" pairs, one per line or several separated by semicolons; skips blank lines and
// lines that begin with #. Keys: outcome, caseid, user, cancelled, status, keep, log, wait
// (milliseconds, 0 to 60000).
Plan ParsePlan(std::u16string_view text);

// The plan's answer to a request.
Answer AnswerByPlan(const Plan& plan, const Request& request, automation::Date now);

}  // namespace simulator
