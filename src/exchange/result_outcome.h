// The outcome of a request, as its result file reports it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "exchange/result_files.h"
#include "util/attempt.h"

namespace exchange {

// The statuses that the link program reports; any other changes nothing.
enum class Status : std::int32_t { Changed = 1, Sent = 5, Withdrawn = 7 };

struct Outcome {
  // As in the result.
  std::int32_t status = 0;
  std::u16string caseId;
  std::u16string userName;
  std::u16string userDefData;
};

// The outcome of a new case or application; nothing if there is nothing to act on. Deletes a
// cancelled result. Shows its own message box if the second of the two loads fails. Error 13 or 6
// for invalid numbers.
std::optional<Outcome> ReadNewOutcome(ResultFile& file);

// The outcome of an opened case. Asks the user if the case has been deleted in Vilnor Link.
// `linkedCase` is the case in the link record. If its lookup failed, asks nothing, deletes nothing
// by an empty number and sets the result aside.
std::optional<Outcome> ReadExistOutcome(ResultFile& file,
                                        const util::Attempt<std::u16string>& linkedCase);

// The status to act on; nothing if this outcome's status changes nothing.
std::optional<Status> StatusOfNew(const Outcome& outcome);
std::optional<Status> StatusOfExisting(const Outcome& outcome);

}  // namespace exchange
