// The case that a link record names.
#pragma once

#include <cstdint>
#include <string>

#include "util/attempt.h"

namespace exchange {

// "" without such a record.
util::Attempt<std::u16string> LinkedCaseId(std::int32_t vilnorId);

}  // namespace exchange
