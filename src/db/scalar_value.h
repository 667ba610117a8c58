// A statement's single value.
#pragma once

#include <string>

#include "automation/automation_error.h"
#include "automation/value.h"

namespace db {

// The first field of the statement's first row on the shared connection; Empty if no row is
// returned, and after an error, which has been shown.
automation::Value GetScalarValue(const std::u16string& statement);

// The same in two steps, for transactions, which must not stay open while a box is shown: one reads
// without the error trap, the other shows and traces what the trap would have.
automation::Value ReadScalarValue(const std::u16string& statement);
void ShowScalarError(const automation::AutomationError& error);

}  // namespace db
