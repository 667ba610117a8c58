#include "ado_dll/errors_object.h"

#include <utility>

#include "ado_dll/enumeration.h"
#include "ado_dll/method.h"
#include "automation/conversion.h"
#include "com/variant.h"
#include "odbc/ado_error.h"

namespace ado_dll {

ErrorObject::ErrorObject(odbc::DriverError error) : error_(std::move(error)) {}

HRESULT ErrorObject::get_Number(LONG* number) {
  return Method([&] { Out(number) = error_.number(); });
}

HRESULT ErrorObject::get_Source(BSTR* source) {
  return Method([&] { Out(source) = NewText(error_.source()); });
}

HRESULT ErrorObject::get_Description(BSTR* description) {
  return Method([&] { Out(description) = NewText(error_.description()); });
}

HRESULT ErrorObject::get_HelpFile(BSTR* file) {
  return Method([&] { Out(file) = NewText(u""); });
}

HRESULT ErrorObject::get_HelpContext(LONG* context) {
  return Method([&] { Out(context) = 0; });
}

HRESULT ErrorObject::get_SQLState(BSTR* state) {
  return Method([&] { Out(state) = NewText(error_.state()); });
}

HRESULT ErrorObject::get_NativeError(LONG* native) {
  return Method([&] { Out(native) = error_.native(); });
}

HRESULT ErrorsObject::get_Count(LONG* count) {
  return Method([&] { Out(count) = error_ ? 1 : 0; });
}

HRESULT ErrorsObject::_NewEnum(IUnknown** object) {
  return Method([&] {
    std::vector<com::ComPtr<IDispatch>> errors;
    if (error_) {
      errors.emplace_back(Make<ErrorObject>(*error_).get());
    }
    Out(object) = Make<Enumeration>(std::move(errors)).Detach();
  });
}

HRESULT ErrorsObject::get_Item(VARIANT index, Error** object) {
  return Method([&] {
    const auto number = automation::ToInt32(com::ToValue(index), automation::Regional());
    if (!error_ || number != 0) {
      throw odbc::MakeError(odbc::AdoError::ItemNotFound, odbc::kConnectionSource);
    }
    Out(object) = Make<ErrorObject>(*error_).Detach();
  });
}

HRESULT ErrorsObject::Refresh() {
  return S_OK;
}

HRESULT ErrorsObject::Clear() {
  return Method([&] { Forget(); });
}

}  // namespace ado_dll
