// A statement's single value.
#pragma once

#include <string>

#include "automation/automation_error.h"
#include "automation/value.h"

namespace db {

// The first field of the statement's first row on the shared connection; Empty when no row comes
// back, and after an error, which it has shown.
automation::Value GetScalarValue(const std::u16string& statement);

// The same in two parts, for a transaction, which must not stay open while a box waits: reads
// without the error trap, and shows what the trap would have shown.
automation::Value ReadScalarValue(const std::u16string& statement);
void ShowScalarError(const automation::AutomationError& error);

}  // namespace db
