#include "com/failure.h"

#include "automation/automation_error.h"
#include "automation/current_error.h"
#include "com/com_ptr.h"
#include "com/wide_text.h"

namespace com {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

constexpr std::int32_t kHighestNumber = 65535;

HRESULT ResultOf(const AutomationError& error) {
  std::int32_t number = error.number();
  if (number < 0) {
    return number;
  }
  if (number == 0 || number > kHighestNumber) {
    number = static_cast<std::int32_t>(RuntimeError::AutomationFailure);
  }
  return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
}

// Does nothing when the system cannot create the error information; the caller then has the HRESULT
// only.
void Describe(const AutomationError& error, const Origin& origin) {
  ComPtr<ICreateErrorInfo> creation;
  ComPtr<IErrorInfo> information;
  if (FAILED(CreateErrorInfo(creation.Receive())) ||
      FAILED(creation->QueryInterface(IID_IErrorInfo, information.ReceiveVoid()))) {
    return;
  }
  std::wstring source = error.source().empty() ? origin.source : Wide(error.source());
  std::wstring description = Wide(error.description());
  creation->SetGUID(origin.interfaceId);
  creation->SetSource(source.data());
  creation->SetDescription(description.data());
  SetErrorInfo(0, information.get());
}

}  // namespace

HRESULT ReportCurrentError(const Origin& origin) noexcept {
  try {
    const AutomationError error = automation::CurrentError();
    Describe(error, origin);
    return ResultOf(error);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace com
