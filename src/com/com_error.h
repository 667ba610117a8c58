// Failed COM calls as the component's errors.
#pragma once

#include "com/win32.h"

namespace com {

// Does nothing for a success. For a failure throws an AutomationError with the source and the text
// that the object left in the thread's error information, else with the system's text for the code.
void Check(HRESULT result);

// Check() of a call, with no older error's information taken for this call's.
template <class Call>
void CheckCall(Call&& call) {
  SetErrorInfo(0, nullptr);
  Check(call());
}

}  // namespace com
