#include "com/failure.h"

#include "automation/automation_error.h"
#include "util/error_trap.h"
#include "windows/com_ptr.h"
#include "windows/wide_text.h"

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

// Left undone when the system cannot make the information; the result alone then tells the error.
void Describe(const AutomationError& error, REFIID interfaceId) {
  windows::ComPtr<ICreateErrorInfo> creation;
  windows::ComPtr<IErrorInfo> information;
  if (FAILED(CreateErrorInfo(creation.Receive())) ||
      FAILED(creation->QueryInterface(IID_IErrorInfo, information.ReceiveVoid()))) {
    return;
  }
  std::wstring source = error.source().empty() ? L"Vilnor" : windows::Wide(error.source());
  std::wstring description = windows::Wide(error.description());
  creation->SetGUID(interfaceId);
  creation->SetSource(source.data());
  creation->SetDescription(description.data());
  SetErrorInfo(0, information.get());
}

}  // namespace

HRESULT ReportCurrentError(REFIID interfaceId) noexcept {
  try {
    const AutomationError error = util::CurrentError();
    Describe(error, interfaceId);
    return ResultOf(error);
  } catch (...) {
    return E_OUTOFMEMORY;
  }
}

}  // namespace com
