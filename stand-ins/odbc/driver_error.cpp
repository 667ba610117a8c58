#include "odbc/driver_error.h"

#include <algorithm>
#include <array>
#include <vector>

#include "odbc/ado_error.h"

namespace odbc {
namespace {

// A length is a 16-bit number here.
constexpr std::size_t kLongestText = 32767;
constexpr std::size_t kUsualText = 1024;
constexpr std::size_t kStateLength = 5;

constexpr std::int32_t kIntegrityViolation = -2147217873;    // DB_E_INTEGRITYVIOLATION
constexpr std::int32_t kNoTable = -2147217865;               // DB_E_NOTABLE
constexpr std::int32_t kDuplicateTable = -2147217857;        // DB_E_DUPLICATETABLEID
constexpr std::int32_t kDataOverflow = -2147217833;          // DB_E_DATAOVERFLOW
constexpr std::int32_t kCannotConvertValue = -2147217913;    // DB_E_CANTCONVERTVALUE
constexpr std::int32_t kAuthenticationFailed = -2147217843;  // DB_SEC_E_AUTH_FAILED
constexpr std::int32_t kPermissionDenied = -2147217911;      // DB_SEC_E_PERMISSIONDENIED
constexpr std::int32_t kTimeExpired = -2147217871;           // DB_E_ABORTLIMITREACHED

struct StateNumber {
  std::u16string_view statePrefix;
  std::int32_t number;
};

// The first entry whose prefix fits decides.
constexpr std::array kStateNumbers = {
    StateNumber{u"23", kIntegrityViolation},   StateNumber{u"42S02", kNoTable},
    StateNumber{u"42P01", kNoTable},           StateNumber{u"42S01", kDuplicateTable},
    StateNumber{u"42P07", kDuplicateTable},    StateNumber{u"42501", kPermissionDenied},
    StateNumber{u"42", kErrorsInCommand},      StateNumber{u"37", kErrorsInCommand},
    StateNumber{u"21", kErrorsInCommand},      StateNumber{u"55", kErrorsInCommand},
    StateNumber{u"22001", kDataOverflow},      StateNumber{u"22003", kDataOverflow},
    StateNumber{u"22008", kDataOverflow},      StateNumber{u"22", kCannotConvertValue},
    StateNumber{u"28", kAuthenticationFailed}, StateNumber{u"HYT", kTimeExpired},
    StateNumber{u"57014", kTimeExpired},
};

struct NativeNumber {
  std::int32_t native;
  std::int32_t number;
};

// SQLite's result codes; its driver reports every one of them as HY000.
constexpr std::u16string_view kSqliteMark = u"[SQLite]";
constexpr std::array kSqliteNumbers = {
    NativeNumber{1, kErrorsInCommand},      // SQLITE_ERROR: syntax, missing table or column
    NativeNumber{-1, kErrorsInCommand},     // more than one statement
    NativeNumber{18, kDataOverflow},        // SQLITE_TOOBIG
    NativeNumber{19, kIntegrityViolation},  // SQLITE_CONSTRAINT
    NativeNumber{20, kCannotConvertValue},  // SQLITE_MISMATCH
    NativeNumber{8, kPermissionDenied},     // SQLITE_READONLY
};

// Line ends behind a text would only add blank lines to a message box.
std::u16string WithoutTrailingSpace(std::u16string text) {
  text.erase(text.find_last_not_of(u" \t\r\n") + 1);
  return text;
}

}  // namespace

Diagnostic FirstDiagnostic(SQLSMALLINT handleType, SQLHANDLE handle, TextCalls calls) {
  return WithCalls(calls, [&]<class Calls>(Calls /*calls*/) {
    using Unit = typename Calls::Unit;
    std::vector<Unit> state(kStateLength + 1);
    std::vector<Unit> text(kUsualText);
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    const auto read = [&] {
      return Calls::Diagnose(handleType, handle, SQLSMALLINT{1}, state.data(), &native, text.data(),
                             static_cast<SQLSMALLINT>(text.size()), &length);
    };
    SQLRETURN result = read();
    if (result == SQL_SUCCESS_WITH_INFO && static_cast<std::size_t>(length) >= text.size()) {
      text.resize(std::min(static_cast<std::size_t>(length) + 1, kLongestText));
      result = read();
    }
    if (!SQL_SUCCEEDED(result)) {
      return Diagnostic();
    }
    state.resize(kStateLength);
    text.resize(std::min(static_cast<std::size_t>(length), text.size() - 1));
    return Diagnostic{.state = Calls::Decode(state),
                      .native = native,
                      .text = WithoutTrailingSpace(Calls::Decode(text))};
  });
}

std::int32_t ErrorNumber(const Diagnostic& diagnostic) {
  const auto* const byState = std::find_if(
      kStateNumbers.begin(), kStateNumbers.end(),
      [&](const auto& entry) { return diagnostic.state.starts_with(entry.statePrefix); });
  if (byState != kStateNumbers.end()) {
    return byState->number;
  }
  if (diagnostic.text.starts_with(kSqliteMark)) {
    const auto* const byNative =
        std::find_if(kSqliteNumbers.begin(), kSqliteNumbers.end(),
                     [&](const auto& entry) { return entry.native == diagnostic.native; });
    if (byNative != kSqliteNumbers.end()) {
      return byNative->number;
    }
  }
  return static_cast<std::int32_t>(ProviderError::Failure);
}

DriverError::DriverError(const Diagnostic& diagnostic)
    : AutomationError(ErrorNumber(diagnostic), std::u16string(kProviderSource),
                      diagnostic.text.empty() ? u"Unspecified error" : diagnostic.text),
      state_(diagnostic.state),
      native_(diagnostic.native) {}

void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle, TextCalls calls) {
  if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) {
    throw DriverError(FirstDiagnostic(handleType, handle, calls));
  }
}

}  // namespace odbc
