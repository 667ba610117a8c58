#include "util/rounding.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "automation/automation_error.h"
#include "automation/conversion.h"
#include "util/error_trap.h"

namespace util {
namespace {

using automation::InDoubleDigits;

// Rounding steps per whole, for modes from 1.
constexpr std::array<double, 4> kFactors = {20, 10, 2, 1};

// For zero either half will do: it is truncated again.
double HalfWithSignOf(double number) {
  return number < 0 ? -0.5 : 0.5;
}

}  // namespace

double RoundOffAmount(double amount, std::int32_t mode, double& difference) {
  difference = 0;
  // Kept: the name includes that of a form of the host; support staff know it.
  return UnderTrap(u" frmPreDefPrice: RoundOffAmount", kModBVilnorIcon, [&] {
    if (mode < 1 || mode > std::ssize(kFactors)) {
      return amount;
    }
    const double factor = kFactors[static_cast<std::size_t>(mode - 1)];
    const double steps = InDoubleDigits(amount * factor);
    if (!std::isfinite(steps)) {
      throw automation::AutomationError(automation::RuntimeError::Overflow);
    }
    const double whole = std::trunc(InDoubleDigits(steps + HalfWithSignOf(steps)));
    const double rounded = InDoubleDigits(whole / factor);
    difference = rounded - amount;
    return rounded;
  });
}

}  // namespace util
