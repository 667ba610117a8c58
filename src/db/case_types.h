// The kinds of link records.
#pragma once

#include <cstdint>

namespace db {

inline constexpr std::int32_t kPriorApproval = 1;
inline constexpr std::int32_t kOrdinaryCase = 9;

}  // namespace db
