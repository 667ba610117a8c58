#include "ado-odbc/method.h"

#include <cstdint>

#include "odbc/ado_error.h"
#include "windows/bstr.h"
#include "windows/com_ptr.h"
#include "windows/variant.h"
#include "windows/wide_text.h"

namespace ado_odbc {

HRESULT HresultOf(const automation::AutomationError& error) {
  constexpr std::int32_t kHighestOwnNumber = 0xFFFF;
  const bool isOwn = error.number() > 0 && error.number() <= kHighestOwnNumber;
  return isOwn ? MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, error.number()) : error.number();
}

HRESULT Report(const automation::AutomationError& error) noexcept {
  const HRESULT result = HresultOf(error);
  windows::ComPtr<ICreateErrorInfo> creator;
  if (FAILED(CreateErrorInfo(creator.Receive()))) {
    return result;
  }
  auto source = windows::Wide(error.source());
  auto description = windows::Wide(error.description());
  creator->SetSource(source.data());
  creator->SetDescription(description.data());
  windows::ComPtr<IErrorInfo> information;
  if (SUCCEEDED(creator->QueryInterface(IID_IErrorInfo, information.ReceiveVoid()))) {
    SetErrorInfo(0, information.get());
  }
  return result;
}

HRESULT NotSupported() noexcept {
  return Method([] { throw odbc::MakeError(odbc::AdoError::FeatureNotAvailable, u"ADODB"); });
}

BSTR NewText(std::u16string_view text) {
  return windows::Bstr(text).Detach();
}

void Store(VARIANT* target, const automation::Value& value) {
  Out(target) = windows::Variant(value).Detach();
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

}  // namespace ado_odbc
