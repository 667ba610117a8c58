// A driver's diagnostics for a failed call, and the error that ADO's ODBC provider makes of them.
#pragma once

#include <cstdint>
#include <string>

#include "automation/automation_error.h"
#include "odbc/dialect.h"

namespace odbc {

// The first diagnostic record of a handle.
struct Diagnostic {
  std::u16string state;  // SQLSTATE, five characters
  std::int32_t native = 0;
  std::u16string text;
};

// Empty fields when the handle holds no record.
Diagnostic FirstDiagnostic(SQLSMALLINT handleType, SQLHANDLE handle, TextCalls calls);

// ADO's error for it: by the dialect's own codes, then by the standard SQLSTATEs, otherwise
// Failure.
ProviderError ErrorOf(const Diagnostic& diagnostic, const Dialect& dialect);

// An error that a driver raised: that number, with the driver's text unchanged.
class DriverError : public automation::AutomationError {
 public:
  DriverError(const Diagnostic& diagnostic, const Dialect& dialect);

  bool Is(ProviderError error) const { return number() == static_cast<std::int32_t>(error); }
  const std::u16string& state() const { return state_; }
  std::int32_t native() const { return native_; }

 private:
  std::u16string state_;
  std::int32_t native_;
};

// Raises the handle's error unless `result` is a success or "no data".
void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle, const Dialect& dialect);

}  // namespace odbc
