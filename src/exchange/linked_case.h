// The case that a link record names.
#pragma once

#include <cstdint>
#include <string>

namespace exchange {

// "" without such a record, and after a failed lookup, which has shown its box.
std::u16string LinkedCaseId(std::int32_t vilnorId);

}  // namespace exchange
