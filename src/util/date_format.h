// The session's date format, and dates built in it.
#pragma once

#include <string>
#include <string_view>

#include "automation/value.h"

namespace util {

// The user's short date picture with a four-digit year ("yy-MM-dd" becomes "YYYY-MM-dd"); if the
// system returns none, a picture chosen by the session's gKestraLangID.
std::u16string GetLanguageDateFormat();

// The date that the three texts form in the session's gDateFormat, regardless of the user's current
// locale; the empty date (days 0) if they do not form one.
automation::Date DateFromParts(std::u16string_view year, std::u16string_view month,
                               std::u16string_view day);

// Whether the session's gDateFormat has a year. If so, the year above is the date's, if the three
// form one. Takes no memory.
bool SessionFormatHasYear();

}  // namespace util
