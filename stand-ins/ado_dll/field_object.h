// ADO's Field: one column of a recordset, with its value in the current row.
#pragma once

#include <cstddef>

#include "ado_dll/recordset_object.h"
#include "ado_dll/unsupported_field.h"
#include "odbc/column.h"

namespace ado_dll {

class FieldObject : public UnsupportedField {
 public:
  // `index` is one of the recordset's columns.
  FieldObject(com::ComPtr<RecordsetObject> recordset, std::size_t index);

  HRESULT STDMETHODCALLTYPE get_Name(BSTR* name) override;
  HRESULT STDMETHODCALLTYPE get_Type(DataTypeEnum* type) override;
  HRESULT STDMETHODCALLTYPE get_DefinedSize(ADO_LONGPTR* size) override;
  HRESULT STDMETHODCALLTYPE get_Precision(unsigned char* precision) override;
  HRESULT STDMETHODCALLTYPE get_NumericScale(unsigned char* scale) override;
  HRESULT STDMETHODCALLTYPE get_Value(VARIANT* value) override;
  HRESULT STDMETHODCALLTYPE put_Value(VARIANT value) override;

 private:
  com::ComPtr<RecordsetObject> recordset_;
  std::size_t index_;
  // The field's description, available even after its recordset is closed.
  odbc::Column column_;
};

}  // namespace ado_dll
