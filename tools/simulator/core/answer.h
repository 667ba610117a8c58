// The outcomes that a person (or a plan) chooses, and the result file that each makes.
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
  // The case is gone in the link program; for an existing case only.
  Deleted,
  // A result file that is no XML.
  Unreadable,
  // The program is closed without an answer: no result file, no message.
  None,
};

// The outcome of a plan's word ("sent", "changed", ...), or nothing.
std::optional<Outcome> OutcomeOfWord(std::u16string_view word);
// The words, for messages: "sent, changed, ...".
std::u16string OutcomeWords();
bool IsPossible(Outcome outcome, RequestKind kind);

struct Answer {
  Outcome outcome = Outcome::None;
  // The case's identifier in the link program.
  std::u16string caseId;
  std::u16string userName;
  // Texts to write into Cancelled and Status instead of the outcome's own; an empty one leaves the
  // element out. For provoking what the outcomes do not.
  std::optional<std::u16string> cancelled;
  std::optional<std::u16string> status;
};

// What a link program would put there by itself: the case's own identifier, or an invented number
// made of the date and time for a new one; the participant of the request, or "simulator".
std::u16string DefaultCaseId(const Request& request, automation::Date now);
std::u16string DefaultUserName(const Request& request);

// The bytes of the result file, ISO-8859-1 with character references for what lies outside.
// Raises Problem for a text with a character that XML forbids. Not for Outcome::None.
std::string ResultFileBytes(const Request& request, const Answer& answer);

}  // namespace simulator
