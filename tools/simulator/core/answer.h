// The outcomes that a person (or a plan) can choose, and their result files.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "automation/value.h"
#include "simulator/core/request.h"

namespace simulator {

enum class Outcome {
  Sent,
  Changed,
  Withdrawn,
  Cancelled,
  // The case is deleted in the link program; for an existing case only.
  Deleted,
  // A result file that is not XML.
  Unreadable,
  // The program is closed without an answer: no result file, no message.
  None,
};

// The outcome for a plan's word ("sent", "changed", ...), or nothing.
std::optional<Outcome> OutcomeOfWord(std::u16string_view word);
// The words, for messages: "sent, changed, ...".
std::u16string OutcomeWords();
bool IsPossible(Outcome outcome, RequestKind kind);

struct Answer {
  Outcome outcome = Outcome::None;
  // The case's identifier in the link program.
  std::u16string caseId;
  std::u16string userName;
  // Texts for Cancelled and Status instead of the outcome's own; an empty one omits the element.
  // They make results that no outcome makes.
  std::optional<std::u16string> cancelled;
  std::optional<std::u16string> status;
};

// The values a link program would choose: the case's own identifier, or for a new case a number
// made from the date and time; the participant in the request, or "simulator".
std::u16string DefaultCaseId(const Request& request, automation::Date now);
std::u16string DefaultUserName(const Request& request);

// The bytes of the result file, ISO-8859-1 with character references for all other characters.
// Raises Problem for a text with a character that XML forbids. Not for Outcome::None.
std::string ResultFileBytes(const Request& request, const Answer& answer);

}  // namespace simulator
