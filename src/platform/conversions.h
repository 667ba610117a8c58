// The conversions of automation/conversion.h and date.h in the locale of the current user.
#pragma once

#include <cstdint>
#include <string>

#include "automation/value.h"

namespace platform {

std::int16_t ToInt16(const automation::Value& value);
std::int32_t ToInt32(const automation::Value& value);
double ToDouble(const automation::Value& value);
bool ToBool(const automation::Value& value);
std::u16string ToText(const automation::Value& value);
automation::Date ToDate(const automation::Value& value);
std::u16string DateText(automation::Date date);

}  // namespace platform
