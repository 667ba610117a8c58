// The members of ADO's Field that this ADO does not implement: each raises ADO's 3251 "Object or
// provider is not capable of performing requested operation.".
#pragma once

#include "ado_dll/arguments.h"
#include "ado_dll/interfaces.h"

namespace ado_dll {

class UnsupportedField : public com::DualObject<Field> {
 public:
  HRESULT STDMETHODCALLTYPE get_ActualSize(ADO_LONGPTR*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_Attributes(LONG*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_OriginalValue(VARIANT*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_UnderlyingValue(VARIANT*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_Status(LONG*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_Properties(Properties**) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE AppendChunk(VARIANT) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE GetChunk(LONG, VARIANT*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_DataFormat(IUnknown**) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE putref_DataFormat(IUnknown*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_Precision(unsigned char) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_NumericScale(unsigned char) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_Type(DataTypeEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_DefinedSize(ADO_LONGPTR) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_Attributes(LONG) override { return NotSupported(); }
};

}  // namespace ado_dll
