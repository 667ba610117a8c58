// The date format of the session and dates put together in it.
#pragma once

#include <string>
#include <string_view>

#include "automation/value.h"

namespace util {

// The user's short date picture with a year of four digits ("yy-MM-dd" becomes "YYYY-MM-dd"); when
// the system gives none, one chosen by the session's gKestraLangID.
std::u16string GetLanguageDateFormat();

// The date that the three texts make in the session's gDateFormat, whatever the user's locale is by
// now; the empty date (days 0) when that is none.
automation::Date DateFromParts(std::u16string_view year, std::u16string_view month,
                               std::u16string_view day);

}  // namespace util
