#include <array>

#include "odbc/dialects.h"

namespace odbc {
namespace {

// Milliseconds to wait for a lock held by another process; the driver's default of 100 seconds
// would freeze the host's window.
constexpr std::array kDefaults = {ConnectionDefault{u"Timeout", u"5000"}};

// The driver reports each of the library's result codes as HY000.
constexpr std::u16string_view kAnyFailure = u"HY000";
constexpr std::array kErrors = {
    // SQLITE_ERROR: syntax, missing table or column
    ErrorCode{kAnyFailure, 1, ProviderError::ErrorsInCommand},
    // more than one statement
    ErrorCode{kAnyFailure, -1, ProviderError::ErrorsInCommand},
    ErrorCode{kAnyFailure, 8, ProviderError::PermissionDenied},     // SQLITE_READONLY
    ErrorCode{kAnyFailure, 18, ProviderError::DataOverflow},        // SQLITE_TOOBIG
    ErrorCode{kAnyFailure, 19, ProviderError::IntegrityViolation},  // SQLITE_CONSTRAINT
    ErrorCode{kAnyFailure, 20, ProviderError::CannotConvertValue},  // SQLITE_MISMATCH
};

}  // namespace

constinit const Dialect kSqlite = {
    .product = u"SQLite",
    .textCalls = TextCalls::Utf8,
    .connectionDefaults = kDefaults,
    .sessionSetup = {},
    .syntax = {.bracketNames = true, .backtickNames = true},
    .identity = u"last_insert_rowid()",
    // SQLite stores a date as the text that it is given.
    .quotedDatesAreTranslated = true,
    .types = {},
    .singlesAreReadAsNumbers = false,
    .ownReading = nullptr,
    .errors = kErrors,
};

}  // namespace odbc
