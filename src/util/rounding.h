// Rounding of amounts to coins.
#pragma once

#include <cstdint>

namespace util {

inline constexpr std::int32_t kRoundToWhole = 4;

// The amount rounded, halves away from zero, to 0.05 (mode 1), 0.10 (2), 0.50 (3) or 1.00 (4);
// `difference` becomes the rounded amount minus the given one. Any other mode returns the amount
// unchanged and a difference of 0. An amount too large to round shows error 6 and returns 0 with a
// difference of 0.
double RoundOffAmount(double amount, std::int32_t mode, double& difference);

}  // namespace util
