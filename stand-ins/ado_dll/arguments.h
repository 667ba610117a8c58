// The arguments and results of ADO's methods as the component's own types.
#pragma once

#include <string_view>

#include "automation/automation_error.h"
#include "automation/value.h"
#include "com/win32.h"

namespace ado_dll {

// ADO's 3251.
HRESULT NotSupported() noexcept;

// Where a method stores its result. Raises ADO's 3001 for a null pointer.
template <class T>
T& Out(T* pointer) {
  if (pointer == nullptr) {
    throw automation::AutomationError(3001, u"ADODB", u"A result was asked for without a place.");
  }
  return *pointer;
}

// Owned by the caller.
BSTR NewText(std::u16string_view text);
void Store(VARIANT* target, const automation::Value& value);
VARIANT_BOOL FromBool(bool value);

// VT_ERROR means that the caller omitted the argument; here an empty VARIANT means the same.
bool IsMissing(const VARIANT& argument);

// Execute and open options: only adOptionUnspecified is implemented, any other raises ADO's 3001.
void RequireNoOptions(LONG options, std::u16string_view source);

}  // namespace ado_dll
