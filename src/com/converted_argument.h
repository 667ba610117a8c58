#pragma once

#include "automation/value.h"
#include "com/variant.h"

namespace com {

// An argument of a late-bound call, converted to the type that the member takes by reference. It
// must not move while passed() is in use.
class ConvertedArgument {
 public:
  // `given` is a value, or a reference to a 16- or 32-bit integer, a string or a VARIANT; the
  // variable referred to outlives this object. DISP_E_TYPEMISMATCH or DISP_E_OVERFLOW when it
  // cannot be converted.
  HRESULT Convert(const VARIANT& given, VARTYPE type);

  // A borrowed VARIANT that refers to this argument.
  const VARIANT& passed() const { return passed_; }

  // If the call changed the value, stores it in the caller's variable, converted to the variable's
  // own type.
  HRESULT StoreBack() const;

 private:
  // Borrowed from the caller.
  VARIANT given_{};
  Variant content_;
  automation::Value before_;
  VARIANT passed_{};
};

}  // namespace com
