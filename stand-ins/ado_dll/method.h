// From the component's errors to what a COM caller gets: an HRESULT and the thread's error
// information, so that early and late bound callers see the same number and text.
#pragma once

#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "automation/automation_error.h"
#include "automation/value.h"
#include "com/win32.h"

namespace ado_dll {

// 0x800Axxxx for ADO's and the runtime's own numbers, the code itself for a provider's.
HRESULT HresultOf(const automation::AutomationError& error);

// Leaves the error in the thread's error information and returns its HRESULT.
HRESULT Report(const automation::AutomationError& error) noexcept;

// ADO's 3251.
HRESULT NotSupported() noexcept;

// Runs the body of a method, S_OK when it raises nothing.
template <class Body>
HRESULT Method(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return S_OK;
  } catch (const automation::AutomationError& error) {
    return Report(error);
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

// Where a method stores its result. ADO's 3001 for a null pointer.
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

// VT_ERROR stands for an argument that the caller left out, as an empty VARIANT does here.
bool IsMissing(const VARIANT& argument);

// Execute and open options: nothing but adOptionUnspecified is implemented, so any other is ADO's
// 3001.
void RequireNoOptions(LONG options, std::u16string_view source);

}  // namespace ado_dll
