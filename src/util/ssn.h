// The Swedish personal identity number of a patient.
#pragma once

#include <string>

#include "automation/value.h"

namespace util {

// Birth date as YYYYMMDD, then "-" ("+" from the hundredth birthday on), then the host's "PersNr"
// value unchanged (Null adds nothing): "19450101-1234". Without `fullForm` only the last 11
// characters ("450101-1234"). A birth date outside the years 100 to 9999 shows error 6 and returns
// the empty text.
std::u16string MakeSSN(automation::Date birthDate, const automation::Value& persNr, bool fullForm);

}  // namespace util
