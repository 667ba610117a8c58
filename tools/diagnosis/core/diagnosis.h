// The diagnosis of a computer on which the component is used. Nothing in it changes anything.
#pragma once

#include <string>

#include "diagnosis/core/computer.h"
#include "diagnosis/core/finding.h"
#include "platform/platform.h"

namespace diagnosis {

// What is examined: the component's own ports, and what else there is to ask.
struct Surroundings {
  platform::Platform& platform;
  Computer& computer;
};

// The lines of a report without the database, in the order of checks.h. A line is left out where a
// fault in front of it leaves nothing to examine.
Findings Diagnose(Surroundings surroundings);

// Connects, and looks for the tables and columns that the component uses. Reads no rows.
Findings DiagnoseDatabase(platform::Platform& platform, const std::u16string& connection);

}  // namespace diagnosis
