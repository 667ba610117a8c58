// The Swedish personal identity number of a patient.
#pragma once

#include <string>

#include "automation/value.h"

namespace util {

// Birth date as YYYYMMDD, "-" or from the hundredth birthday on "+", and the host's "PersNr" value
// as it stands (a Null adds nothing): "19450101-1234". Without `fullForm` the last 11 characters
// only ("450101-1234"). A birth date outside the years 100 to 9999 shows error 6 and gives the
// empty text.
std::u16string MakeSSN(automation::Date birthDate, const automation::Value& persNr, bool fullForm);

}  // namespace util
