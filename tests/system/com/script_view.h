// What a script reads of an object, by name.
#pragma once

#include "automation/value.h"
#include "com/win32.h"

namespace system_tests {

// The value of a property or of a method with at most one argument; empty after an error.
automation::Value Get(IDispatch& object, const wchar_t* name,
                      const automation::Value& argument = {});

// recordset.Fields(name).Value
automation::Value Field(IDispatch& recordset, const char16_t* name);

}  // namespace system_tests
