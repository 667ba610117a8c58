// The plan by which the simulator works without a person.
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
  // What the plan does not name has the defaults of answer.h.
  std::optional<std::u16string> caseId;
  std::optional<std::u16string> userName;
  std::optional<std::u16string> cancelled;
  std::optional<std::u16string> status;
  // Folder that gets copies of the request, the result and the command line; empty for none.
  std::u16string keepFolder;
  // File that a line is added to for each thing done; empty for none.
  std::u16string logFile;
  // How long to look for the host's window.
  std::chrono::milliseconds wait{5000};
  // What cannot be understood, a sentence each (Swedish); empty for a good plan.
  std::vector<std::u16string> problems;
};

// Reads "key=value" pairs, one a line or several on a line between semicolons; blank lines and
// lines that begin with # are passed over. Keys: outcome, caseid, user, cancelled, status, keep,
// log, wait (milliseconds, 0 to 60000).
Plan ParsePlan(std::u16string_view text);

// The plan's answer to a request.
Answer AnswerByPlan(const Plan& plan, const Request& request, automation::Date now);

}  // namespace simulator
