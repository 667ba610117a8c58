// Whether an application has a cost estimate, and the consequences.
#pragma once

#include <cstdint>

#include "automation/value.h"

namespace fhp {

// True when the application was registered after 1 January of the year in which the patient turns
// 65. Kept: false on that very day, because clinics have filed by this boundary. Times of day do
// not count. Both dates pass through the session's date format.
bool IncludesEstimate(automation::Date registered, automation::Date birthDate);

// The reserved entry of the host's user mapping that names the case's participant.
std::int32_t ParticipantCode(bool includeEstimate);

}  // namespace fhp
