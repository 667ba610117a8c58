// Print what an operation returns as a line "result ...". Each takes a function that makes the call
// and stores its result in the argument. Raises an AutomationError if the call fails.
#pragma once

#include "com/bstr.h"
#include "com/com_error.h"
#include "com/com_ptr.h"

namespace sample_host {

void PrintResult(VARIANT_BOOL result);
void PrintResult(long result);
void PrintResult(const com::Bstr& result);
// An ADO recordset: a line "row name=value ..." per row, or "result nothing" if there is none.
void PrintResult(const com::ComPtr<IDispatch>& recordset);

template <class Call>
void PrintTruth(Call&& call) {
  VARIANT_BOOL result = VARIANT_FALSE;
  com::Check(call(&result));
  PrintResult(result);
}

template <class Call>
void PrintNumber(Call&& call) {
  long result = 0;
  com::Check(call(&result));
  PrintResult(result);
}

template <class Call>
void PrintText(Call&& call) {
  com::Bstr result;
  com::Check(call(result.Receive()));
  PrintResult(result);
}

template <class Call>
void PrintRows(Call&& call) {
  com::ComPtr<IDispatch> result;
  com::Check(call(result.Receive()));
  PrintResult(result);
}

}  // namespace sample_host
