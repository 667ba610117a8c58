// ADO's Fields collection of a recordset: its columns, by name in any case or by number from 0.
#pragma once

#include "ado_dll/recordset_object.h"
#include "ado_dll/unsupported_fields.h"

namespace ado_dll {

class FieldsObject : public UnsupportedFields {
 public:
  explicit FieldsObject(com::ComPtr<RecordsetObject> recordset);

  // A script's fields("name") = value writes to the recordset.
  HRESULT InvokeBy(ITypeInfo& description, DISPID member, WORD flags, DISPPARAMS& arguments,
                   VARIANT* result, EXCEPINFO* exception, UINT* argumentError) override;
  // 0 for a closed recordset.
  HRESULT STDMETHODCALLTYPE get_Count(LONG* count) override;
  HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** object) override;
  HRESULT STDMETHODCALLTYPE get_Item(VARIANT index, Field** object) override;
  // The columns of an open recordset do not change.
  HRESULT STDMETHODCALLTYPE Refresh() override;

 private:
  com::ComPtr<RecordsetObject> recordset_;
};

}  // namespace ado_dll
