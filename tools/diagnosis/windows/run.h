// One run of the diagnosis on this computer.
#pragma once

#include <optional>
#include <string>

#include "diagnosis/core/report.h"

namespace diagnosis {

// With a connection string, the database is tested, too. The calling thread enters an apartment of
// its own for the duration; it must not be in one.
Report Run(const std::optional<std::u16string>& connection);

}  // namespace diagnosis
