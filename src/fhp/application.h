#pragma once

#include <cstdint>
#include <string>

#include "util/attempt.h"

namespace fhp {

// Writes the request file of a prior-approval application (form "108692", for older patients also
// the cost estimate, form "108696") and returns its full path. The identifiers are the host's
// arguments; provider, clinician and patient come from the application's own row.
util::Attempt<std::u16string> WriteNewFHP(std::int32_t pid, std::int32_t bid, std::int32_t rid,
                                          std::int32_t fhpId,
                                          const std::u16string& vilnorOutputPath);

}  // namespace fhp
