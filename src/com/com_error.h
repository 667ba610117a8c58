// Failed COM calls as the component's errors.
#pragma once

#include "com/win32.h"

namespace com {

// Does nothing for a success. For a failure throws an AutomationError with the source and the text
// that the object left in the thread's error information, else with the system's text for the code.
void Check(HRESULT result);

// Clears older error information, then makes the call and checks its result.
template <class Call>
void CheckCall(Call&& call) {
  SetErrorInfo(0, nullptr);
  Check(call());
}

}  // namespace com
