// A statement's single value.
#pragma once

#include <string>

#include "automation/value.h"

namespace db {

// The first field of the statement's first row on the shared connection; Empty when no row comes
// back, and after an error, which it has shown.
automation::Value GetScalarValue(const std::u16string& statement);

}  // namespace db
