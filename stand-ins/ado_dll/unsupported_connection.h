// The members of ADO's _Connection that this ADO does not implement: each raises ADO's 3251 "Object
// or provider is not capable of performing requested operation.".
#pragma once

#include "ado_dll/arguments.h"
#include "ado_dll/interfaces.h"

namespace ado_dll {

class UnsupportedConnection : public com::DualObject<_Connection> {
 public:
  HRESULT STDMETHODCALLTYPE get_Properties(Properties**) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_DefaultDatabase(BSTR*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_DefaultDatabase(BSTR) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_IsolationLevel(IsolationLevelEnum*) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE put_IsolationLevel(IsolationLevelEnum) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE get_Attributes(LONG*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_Attributes(LONG) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE get_Mode(ConnectModeEnum*) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_Mode(ConnectModeEnum) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_Provider(BSTR) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE OpenSchema(SchemaEnum, VARIANT, VARIANT, _Recordset**) override {
    return NotSupported();
  }
  HRESULT STDMETHODCALLTYPE Cancel() override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_CommandTimeout(LONG) override { return NotSupported(); }
  HRESULT STDMETHODCALLTYPE put_ConnectionTimeout(LONG) override { return NotSupported(); }
};

}  // namespace ado_dll
