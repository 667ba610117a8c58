// Printing what an operation returns, a line "result ...". Each takes the call as a function of
// where the result goes, and raises an AutomationError when the call fails.
#pragma once

#include "windows/bstr.h"
#include "windows/com_error.h"
#include "windows/com_ptr.h"

namespace sample_host {

void PrintResult(VARIANT_BOOL result);
void PrintResult(long result);
void PrintResult(const windows::Bstr& result);
// An ADO recordset, a line "row name=value ..." for each row; "result nothing" without one.
void PrintResult(const windows::ComPtr<IDispatch>& recordset);

template <class Call>
void PrintTruth(Call&& call) {
  VARIANT_BOOL result = VARIANT_FALSE;
  windows::Check(call(&result));
  PrintResult(result);
}

template <class Call>
void PrintNumber(Call&& call) {
  long result = 0;
  windows::Check(call(&result));
  PrintResult(result);
}

template <class Call>
void PrintText(Call&& call) {
  windows::Bstr result;
  windows::Check(call(result.Receive()));
  PrintResult(result);
}

template <class Call>
void PrintRows(Call&& call) {
  windows::ComPtr<IDispatch> result;
  windows::Check(call(result.Receive()));
  PrintResult(result);
}

}  // namespace sample_host
