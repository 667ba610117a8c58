// Date literals for the host's databases.
#pragma once

#include <string>

#include "automation/value.h"

namespace util {

// The literal for the session's gDbType: #mm-dd-yyyy time# for type 1, 'mm-dd-yyyy time' for type
// 2; with `plainForm` 'date time' in the user's own short date form for both. Empty for any other
// type: the caller's statement then has no date. A `timeText` that is not empty gets a leading
// blank, in the caller's variable too. A date outside the years 100 to 9999 shows error 6 and
// returns the empty text.
std::u16string GetSqlDate(automation::Date date, bool plainForm, std::u16string& timeText);

}  // namespace util
