#include "ado_dll/method.h"

#include <cstdint>

#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/variant.h"
#include "com/wide_text.h"
#include "odbc/ado_error.h"

namespace ado_dll {

HRESULT HresultOf(const automation::AutomationError& error) {
  constexpr std::int32_t kHighestOwnNumber = 0xFFFF;
  const bool isOwn = error.number() > 0 && error.number() <= kHighestOwnNumber;
  return isOwn ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, error.number()) : error.number();
}

HRESULT Report(const automation::AutomationError& error) noexcept {
  const HRESULT result = HresultOf(error);
  com::ComPtr<ICreateErrorInfo> creator;
  if (FAILED(CreateErrorInfo(creator.Receive()))) {
    return result;
  }
  auto source = com::Wide(error.source());
  auto description = com::Wide(error.description());
  creator->SetSource(source.data());
  creator->SetDescription(description.data());
  com::ComPtr<IErrorInfo> information;
  if (SUCCEEDED(creator->QueryInterface(IID_IErrorInfo, information.ReceiveVoid()))) {
    SetErrorInfo(0, information.get());
  }
  return result;
}

HRESULT NotSupported() noexcept {
  return Method([] { throw odbc::MakeError(odbc::AdoError::FeatureNotAvailable, u"ADODB"); });
}

BSTR NewText(std::u16string_view text) {
  return com::Bstr(text).Detach();
}

void Store(VARIANT* target, const automation::Value& value) {
  Out(target) = com::Variant(value).Detach();
}

VARIANT_BOOL FromBool(bool value) {
  return value ? VARIANT_TRUE : VARIANT_FALSE;
}

bool IsMissing(const VARIANT& argument) {
  return V_VT(&argument) == VT_EMPTY ||
         (V_VT(&argument) == VT_ERROR && V_ERROR(&argument) == DISP_E_PARAMNOTFOUND);
}

void RequireNoOptions(LONG options, std::u16string_view source) {
  constexpr LONG kUnspecified = -1;
  if (options != kUnspecified) {
    throw odbc::MakeError(odbc::AdoError::WrongArguments, source);
  }
}

}  // namespace ado_dll
