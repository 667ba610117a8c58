// Whether an application carries a cost estimate, and what follows from it.
#pragma once

#include <cstdint>

#include "automation/value.h"

namespace fhp {

// True when the application was registered after 1 January of the year in which the patient turns
// 65. Kept: on that very day it is not, clinics have filed by this boundary. Times of day do not
// count. Both dates pass through the session's date format.
bool IncludesEstimate(automation::Date registered, automation::Date birthDate);

// The reserved entry of the host's user mapping that names the case's participant.
std::int32_t ParticipantCode(bool includeEstimate);

}  // namespace fhp
