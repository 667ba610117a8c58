#include "util/null_safe.h"

#include <cstdint>

#include "platform/conversions.h"
#include "util/error_trap.h"

namespace util {

std::u16string NullToText(const automation::Value& value) {
  return UnderTrap(u" in NullToText", kModBVilnorIcon,
                   [&] { return value.IsNull() ? std::u16string() : platform::ToText(value); });
}

bool NullToBool(const automation::Value& value) {
  return UnderTrap(u" in NullToBool", kModBVilnorIcon,
                   [&] { return !value.IsNull() && platform::ToBool(value); });
}

automation::Value NullToZero(const automation::Value& value) {
  return UnderTrap(u" in NullToZero", kModBVilnorIcon,
                   [&] { return value.IsNull() ? automation::Value(std::int16_t{0}) : value; });
}

}  // namespace util
