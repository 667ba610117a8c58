#include "ado_dll/fields_object.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "ado_dll/arguments.h"
#include "ado_dll/enumeration.h"
#include "ado_dll/field_object.h"

namespace ado_dll {

FieldsObject::FieldsObject(com::ComPtr<RecordsetObject> recordset)
    : recordset_(std::move(recordset)) {}

HRESULT FieldsObject::InvokeBy(ITypeInfo& description, DISPID member, WORD flags,
                               DISPPARAMS& arguments, VARIANT* result, EXCEPINFO* exception,
                               UINT* argumentError) {
  if (member == DISPID_VALUE && (flags & DISPATCH_PROPERTYPUT) != 0) {
    return recordset_->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments, result,
                              exception, argumentError);
  }
  return UnsupportedFields::InvokeBy(description, member, flags, arguments, result, exception,
                                     argumentError);
}

HRESULT FieldsObject::get_Count(LONG* count) {
  return Call([&] {
    const auto& ado = recordset_->Ado();
    Out(count) = ado.IsOpen() ? static_cast<LONG>(ado.Columns().size()) : 0;
  });
}

HRESULT FieldsObject::_NewEnum(IUnknown** object) {
  return Call([&] {
    std::vector<com::ComPtr<IDispatch>> fields;
    for (std::size_t i = 0; i < recordset_->Ado().Columns().size(); ++i) {
      fields.emplace_back(com::MakeObject<FieldObject>(recordset_, i).get());
    }
    Out(object) = com::MakeObject<Enumeration>(std::move(fields)).Detach();
  });
}

HRESULT FieldsObject::get_Item(VARIANT index, Field** object) {
  return Call([&] {
    Out(object) = com::MakeObject<FieldObject>(recordset_, recordset_->ColumnAt(index)).Detach();
  });
}

HRESULT FieldsObject::Refresh() {
  return S_OK;
}

}  // namespace ado_dll
