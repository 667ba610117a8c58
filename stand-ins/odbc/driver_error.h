// What a driver says of a failed call, and the error that ADO's provider for ODBC makes of it.
#pragma once

#include <cstdint>
#include <string>

#include "automation/automation_error.h"
#include "odbc/text_calls.h"

namespace odbc {

// DB_E_ERRORSINCOMMAND: a statement that the database cannot read, or that names what is not there.
inline constexpr std::int32_t kErrorsInCommand = -2147217900;

// The first diagnostic record of a handle.
struct Diagnostic {
  std::u16string state;  // SQLSTATE, five characters
  std::int32_t native = 0;
  std::u16string text;
};

// Empty fields when the handle holds no record.
Diagnostic FirstDiagnostic(SQLSMALLINT handleType, SQLHANDLE handle, TextCalls calls);

// The OLE DB code that fits the SQLSTATE (or, for a driver that has only one state for everything,
// its native code): -2147217900 for a statement that the database refuses, -2147217873 for a
// violated constraint, -2147467259 for the connection and whatever has no code of its own.
std::int32_t ErrorNumber(const Diagnostic& diagnostic);

// An error that a driver raised: that number, with the driver's text as it stands.
class DriverError : public automation::AutomationError {
 public:
  explicit DriverError(const Diagnostic& diagnostic);

  const std::u16string& state() const { return state_; }
  std::int32_t native() const { return native_; }

 private:
  std::u16string state_;
  std::int32_t native_;
};

// Raises the handle's error unless `result` is a success or "no data".
void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle,
           TextCalls calls = TextCalls::Wide);

}  // namespace odbc
