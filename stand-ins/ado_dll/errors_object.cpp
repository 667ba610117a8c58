#include "ado_dll/errors_object.h"

#include <utility>

#include "ado_dll/arguments.h"
#include "ado_dll/enumeration.h"
#include "automation/conversion.h"
#include "com/variant.h"
#include "odbc/ado_error.h"

namespace ado_dll {

// NOLINTNEXTLINE(bugprone-throw-keyword-missing): it is kept, for the host to read
ErrorObject::ErrorObject(odbc::DriverError error) : error_(std::move(error)) {}

HRESULT ErrorObject::get_Number(LONG* number) {
  return Call([&] { Out(number) = error_.number(); });
}

HRESULT ErrorObject::get_Source(BSTR* source) {
  return Call([&] { Out(source) = NewText(error_.source()); });
}

HRESULT ErrorObject::get_Description(BSTR* description) {
  return Call([&] { Out(description) = NewText(error_.description()); });
}

HRESULT ErrorObject::get_HelpFile(BSTR* file) {
  return Call([&] { Out(file) = NewText(u""); });
}

HRESULT ErrorObject::get_HelpContext(LONG* context) {
  return Call([&] { Out(context) = 0; });
}

HRESULT ErrorObject::get_SQLState(BSTR* state) {
  return Call([&] { Out(state) = NewText(error_.state()); });
}

HRESULT ErrorObject::get_NativeError(LONG* native) {
  return Call([&] { Out(native) = error_.native(); });
}

HRESULT ErrorsObject::get_Count(LONG* count) {
  return Call([&] { Out(count) = error_ ? 1 : 0; });
}

HRESULT ErrorsObject::_NewEnum(IUnknown** object) {
  return Call([&] {
    std::vector<com::ComPtr<IDispatch>> errors;
    if (error_) {
      errors.emplace_back(com::MakeObject<ErrorObject>(*error_).get());
    }
    Out(object) = com::MakeObject<Enumeration>(std::move(errors)).Detach();
  });
}

HRESULT ErrorsObject::get_Item(VARIANT index, Error** object) {
  return Call([&] {
    const auto number = automation::ToInt32(com::ToValue(index), automation::Regional());
    if (!error_ || number != 0) {
      throw odbc::MakeError(odbc::AdoError::ItemNotFound, odbc::kConnectionSource);
    }
    Out(object) = com::MakeObject<ErrorObject>(*error_).Detach();
  });
}

HRESULT ErrorsObject::Refresh() {
  return S_OK;
}

HRESULT ErrorsObject::Clear() {
  return Call([&] { Forget(); });
}

}  // namespace ado_dll
