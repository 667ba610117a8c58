#include "vilnor_dll/failure.h"

#include "automation/automation_error.h"
#include "com/com_ptr.h"
#include "com/wide_text.h"
#include "util/guarded.h"

namespace vilnor_dll {
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
  com::ComPtr<ICreateErrorInfo> creation;
  com::ComPtr<IErrorInfo> information;
  if (FAILED(CreateErrorInfo(creation.Receive())) ||
      FAILED(creation->QueryInterface(IID_IErrorInfo, information.ReceiveVoid()))) {
    return;
  }
  std::wstring source = error.source().empty() ? L"Vilnor" : com::Wide(error.source());
  std::wstring description = com::Wide(error.description());
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

}  // namespace vilnor_dll
