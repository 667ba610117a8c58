#include "com/converted_argument.h"

namespace com {
namespace {

bool IsReference(const VARIANT& argument) {
  return (V_VT(&argument) & VT_BYREF) != 0;
}

VARTYPE ReferencedType(const VARIANT& variable) {
  return static_cast<VARTYPE>(V_VT(&variable) & ~VT_BYREF);
}

bool CanStoreInto(const VARIANT& variable) {
  const VARTYPE type = ReferencedType(variable);
  return type == VT_VARIANT || type == VT_I2 || type == VT_I4 || type == VT_BSTR;
}

// Requires a variable that CanStoreInto() accepted.
HRESULT Store(const VARIANT& value, const VARIANT& variable) {
  const VARTYPE type = ReferencedType(variable);
  if (type == VT_VARIANT) {
    return VariantCopy(V_VARIANTREF(&variable), const_cast<VARIANT*>(&value));
  }
  Variant converted;
  const HRESULT result =
      VariantChangeType(converted.Receive(), const_cast<VARIANT*>(&value), 0, type);
  if (FAILED(result)) {
    return result;
  }
  const VARIANT& content = converted.get();
  if (type == VT_I2) {
    *V_I2REF(&variable) = V_I2(&content);
  } else if (type == VT_I4) {
    *V_I4REF(&variable) = V_I4(&content);
  } else if (SysReAllocStringLen(V_BSTRREF(&variable), V_BSTR(&content),
                                 SysStringLen(V_BSTR(&content))) == FALSE) {
    return E_OUTOFMEMORY;
  }
  return S_OK;
}

}  // namespace

HRESULT ConvertedArgument::Convert(const VARIANT& given, VARTYPE type) {
  if (IsReference(given) && !CanStoreInto(given)) {
    return DISP_E_TYPEMISMATCH;
  }
  given_ = given;
  Variant value;
  HRESULT result = VariantCopyInd(value.Receive(), &given_);
  if (SUCCEEDED(result)) {
    result = VariantChangeType(content_.Receive(), const_cast<VARIANT*>(&value.get()), 0, type);
  }
  if (SUCCEEDED(result)) {
    before_ = ToValue(content_.get());
    V_VT(&passed_) = static_cast<VARTYPE>(VT_BYREF | type);
    // A VARIANT stores integers and strings at the same offset.
    V_BYREF(&passed_) = const_cast<LONG*>(&V_I4(&content_.get()));
  }
  return result;
}

HRESULT ConvertedArgument::StoreBack() const {
  const bool changed = ToValue(content_.get()) != before_;
  return changed && IsReference(given_) ? Store(content_.get(), given_) : S_OK;
}

}  // namespace com
