// What a result file says happened to its request.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "exchange/result_files.h"
#include "util/attempt.h"

namespace exchange {

// What the link program reports; every other status leaves everything as it is.
enum class Status : std::int32_t { Changed = 1, Sent = 5, Withdrawn = 7 };

struct Outcome {
  // As the result has it.
  std::int32_t status = 0;
  std::u16string caseId;
  std::u16string userName;
  std::u16string userDefData;
};

// The outcome of a new case or application; nothing when there is none to act on. A cancelled
// result is deleted. Shows its own box when the second of the two loads fails; error 13 or 6 for
// numbers that are none.
std::optional<Outcome> ReadNewOutcome(ResultFile& file);

// The outcome of an opened case, which asks the user when the case has been deleted in Vilnor Link.
// `linkedCase` is the case that the link record names. Where its lookup failed, nothing is asked
// and nothing is deleted by an empty number; the result is set aside.
std::optional<Outcome> ReadExistOutcome(ResultFile& file,
                                        const util::Attempt<std::u16string>& linkedCase);

// What is to be done; nothing where an outcome of this status changes nothing.
std::optional<Status> StatusOfNew(const Outcome& outcome);
std::optional<Status> StatusOfExisting(const Outcome& outcome);

}  // namespace exchange
