// The members of ADO's Fields that this ADO does not implement: each raises ADO's 3251 "Object or
// provider is not capable of performing requested operation.".
#pragma once

#include "ado_dll/arguments.h"
#include "ado_dll/interfaces.h"

namespace ado_dll {

class UnsupportedFields : public com::DualObject<Fields> {
 public:
  HRESULT STDMETHODCALLTYPE _Append(BSTR, DataTypeEnum, ADO_LONGPTR, FieldAttributeEnum) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE Delete(VARIANT) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE Append(BSTR, DataTypeEnum, ADO_LONGPTR, FieldAttributeEnum,
                                   VARIANT) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE Update() override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE Resync(ResyncEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE CancelUpdate() override { return NotSupported(); }
};

}  // namespace ado_dll
