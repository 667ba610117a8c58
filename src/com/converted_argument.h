#pragma once

#include "automation/value.h"
#include "com/variant.h"

namespace com {

// An argument of a late-bound call in the type that the member takes by reference. It must not move
// while passed() is in use.
class ConvertedArgument {
 public:
  // `given` may be a value, or a reference to a 16- or 32-bit integer, a text or a VARIANT; what it
  // refers to outlives this. DISP_E_TYPEMISMATCH or DISP_E_OVERFLOW when it cannot be converted.
  HRESULT Convert(const VARIANT& given, VARTYPE type);

  // A borrowed VARIANT that refers to this argument.
  const VARIANT& passed() const { return passed_; }

  // When the call changed the value: stores it into the variable that was given, in the variable's
  // own type.
  HRESULT StoreBack() const;

 private:
  // The caller's own; owns nothing.
  VARIANT given_{};
  Variant content_;
  automation::Value before_;
  VARIANT passed_{};
};

}  // namespace com
