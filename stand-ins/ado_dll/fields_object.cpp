#include "ado_dll/fields_object.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "ado_dll/enumeration.h"
#include "ado_dll/field_object.h"
#include "ado_dll/method.h"

namespace ado_dll {

FieldsObject::FieldsObject(com::ComPtr<RecordsetObject> recordset)
    : recordset_(std::move(recordset)) {}

HRESULT FieldsObject::Invoke(DISPID member, REFIID reserved, LCID locale, WORD flags,
                             DISPPARAMS* arguments, VARIANT* result, EXCEPINFO* exception,
                             UINT* badArgument) {
  if (member == DISPID_VALUE && (flags & DISPATCH_PROPERTYPUT) != 0) {
    return recordset_->Invoke(member, reserved, locale, flags, arguments, result, exception,
                              badArgument);
  }
  return UnsupportedFields::Invoke(member, reserved, locale, flags, arguments, result, exception,
                                   badArgument);
}

HRESULT FieldsObject::get_Count(LONG* count) {
  return Method([&] {
    const auto& ado = recordset_->Ado();
    Out(count) = ado.IsOpen() ? static_cast<LONG>(ado.Columns().size()) : 0;
  });
}

HRESULT FieldsObject::_NewEnum(IUnknown** object) {
  return Method([&] {
    std::vector<com::ComPtr<IDispatch>> fields;
    for (std::size_t i = 0; i < recordset_->Ado().Columns().size(); ++i) {
      fields.emplace_back(Make<FieldObject>(recordset_, i).get());
    }
    Out(object) = Make<Enumeration>(std::move(fields)).Detach();
  });
}

HRESULT FieldsObject::get_Item(VARIANT index, Field** object) {
  return Method(
      [&] { Out(object) = Make<FieldObject>(recordset_, recordset_->ColumnAt(index)).Detach(); });
}

HRESULT FieldsObject::Refresh() {
  return S_OK;
}

}  // namespace ado_dll
