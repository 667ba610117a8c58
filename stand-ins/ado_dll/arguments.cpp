#include "ado_dll/arguments.h"

#include "com/bstr.h"
#include "com/failure.h"
#include "com/variant.h"
#include "odbc/ado_error.h"

namespace ado_dll {

HRESULT NotSupported() noexcept {
  return com::Guarded({IID_NULL},
                      [] { throw odbc::MakeError(odbc::AdoError::FeatureNotAvailable, u"ADODB"); });
}

BSTR NewText(std::u16string_view text) {
  return com::Bstr(text).Detach();
}

void Store(VARIANT* target, const automation::Value& value) {
  Out(target) = com::Variant(value).Detach();
}

VARIANT_BOOL FromBool(bool value) {
  return value ? VARIANT_TRUE : VARIANT_FALSE;
}

bool IsMissing(const VARIANT& argument) {
  return V_VT(&argument) == VT_EMPTY ||
         (V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND);
}

void RequireNoOptions(LONG options, std::u16string_view source) {
  constexpr LONG kUnspecified = -1;
  if (options != kUnspecified) {
    throw odbc::MakeError(odbc::AdoError::WrongArguments, source);
  }
}

}  // namespace ado_dll
