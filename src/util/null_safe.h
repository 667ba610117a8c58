// Readers of database values that may be Null. A value that cannot be converted shows the runtime's
// error (13 for a text that is not a number) and is read as the empty value.
#pragma once

#include <string>

#include "automation/value.h"

namespace util {

// The value as text, the empty text for Null.
std::u16string NullToText(const automation::Value& value);
// The value as a flag (any number except 0 is true), false for Null.
bool NullToBool(const automation::Value& value);
// The value unchanged, whatever its type, 0 for Null.
automation::Value NullToZero(const automation::Value& value);

}  // namespace util
