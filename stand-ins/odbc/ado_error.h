// ADO's own errors, with ADO's texts.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/automation_error.h"

namespace odbc {

// By ADO's numbers (the low word of the HRESULT 0x800Axxxx).
enum class AdoError : std::int32_t {
  WrongArguments = 3001,
  NoCurrentRecord = 3021,
  OperationInContext = 3219,
  FeatureNotAvailable = 3251,
  ItemNotFound = 3265,
  WrongValueType = 3421,
  ObjectClosed = 3704,
  ObjectOpen = 3705,
  ProviderNotFound = 3706,
  InvalidConnection = 3709,
};

// Errors of the OLE DB layer that ADO passes on by their HRESULT.
enum class ProviderError : std::int32_t {
  Failure = -2147467259,  // E_FAIL: connection, driver, anything without a code of its own
  // DB_E_ERRORSINCOMMAND: a statement that cannot be parsed, or that names a missing object.
  ErrorsInCommand = -2147217900,
  IntegrityViolation = -2147217873,    // DB_E_INTEGRITYVIOLATION
  NoTable = -2147217865,               // DB_E_NOTABLE
  DuplicateTable = -2147217857,        // DB_E_DUPLICATETABLEID
  DataOverflow = -2147217833,          // DB_E_DATAOVERFLOW
  CannotConvertValue = -2147217913,    // DB_E_CANTCONVERTVALUE
  AuthenticationFailed = -2147217843,  // DB_SEC_E_AUTH_FAILED
  PermissionDenied = -2147217911,      // DB_SEC_E_PERMISSIONDENIED
  TimeExpired = -2147217871,           // DB_E_ABORTLIMITREACHED
  TransactionExists = -2147168237,     // XACT_E_XTIONEXISTS
  NoTransaction = -2147168242,         // XACT_E_NOTRANSACTION
};

// The source that an error names.
inline constexpr std::u16string_view kConnectionSource = u"ADODB.Connection";
inline constexpr std::u16string_view kRecordsetSource = u"ADODB.Recordset";
inline constexpr std::u16string_view kProviderSource = u"ADO over ODBC";

std::u16string_view DescriptionOf(AdoError error);

automation::AutomationError MakeError(AdoError error, std::u16string_view source);
automation::AutomationError MakeError(ProviderError error, std::u16string_view text);

}  // namespace odbc
