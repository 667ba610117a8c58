#include <array>
#include <optional>

#include "odbc/dialects.h"

namespace odbc {
namespace {

constexpr std::array kDefaults = {
    // The server's older utf8 lacks letters outside the 16-bit plane.
    ConnectionDefault{u"CHARSET", u"utf8mb4"},
    // Counts the rows found, not only those changed, as every other product does.
    ConnectionDefault{u"OPTION", u"2"},
};

// The mode reads texts and names as standard SQL does, and rejects a value that does not fit its
// column instead of storing another one. The driver has no statement timeout of its own; this is
// ADO's default CommandTimeout.
constexpr std::array<std::u16string_view, 2> kSessionSetup = {
    u"SET SESSION sql_mode = 'ANSI_QUOTES,NO_BACKSLASH_ESCAPES,STRICT_ALL_TABLES,NO_ZERO_IN_DATE,"
    u"NO_ZERO_DATE,ERROR_FOR_DIVISION_BY_ZERO,NO_ENGINE_SUBSTITUTION', max_statement_time = 30",
    u"SET SESSION TRANSACTION ISOLATION LEVEL READ COMMITTED"};

constexpr std::array kTypes = {
    // The server's type for boolean; the driver does not report the 1 of tinyint(1).
    NamedKind{.typeName = u"tinyint", .kind = ColumnKind::Boolean},
    // There is no money type; this one has currency's digits.
    NamedKind{.typeName = u"decimal", .kind = ColumnKind::Currency, .size = 19, .scale = 4},
};

constexpr std::array kErrors = {
    ErrorCode{u"", 1044, ProviderError::PermissionDenied},  // of a database
    ErrorCode{u"", 1142, ProviderError::PermissionDenied},  // of a table
    ErrorCode{u"", 1143, ProviderError::PermissionDenied},  // of a column
    ErrorCode{u"", 1227, ProviderError::PermissionDenied},  // of an administrator
    ErrorCode{u"", 1049, ProviderError::Failure},           // no such database
    ErrorCode{u"", 1205, ProviderError::TimeExpired},       // waiting for a lock
    ErrorCode{u"", 1969, ProviderError::TimeExpired},       // max_statement_time
};

// A bit arrives as its byte, a zero bit as an empty text. A tinyint that is neither 0 nor 1 is read
// as a number.
std::optional<automation::Value> ReadFlag(std::u16string_view text) {
  if (text.empty() || (text.size() == 1 && text.front() <= 1)) {
    return automation::Value(!text.empty() && text.front() == 1);
  }
  if (text != u"0" && text != u"1") {
    return ToValue(std::u16string(text), ColumnKind::Int16);
  }
  return std::nullopt;
}

// A date that older servers and looser modes accept.
constexpr std::u16string_view kZeroDate = u"0000-00-00";

std::optional<automation::Value> Read(std::u16string_view text, ColumnKind kind) {
  if (kind == ColumnKind::Boolean) {
    return ReadFlag(text);
  }
  if (kind == ColumnKind::Date && text.starts_with(kZeroDate)) {
    return automation::Value(automation::Null());
  }
  if (kind == ColumnKind::Currency && !ParseCurrency(text)) {
    return ToValue(std::u16string(text), ColumnKind::Decimal);
  }
  return std::nullopt;
}

}  // namespace

constinit const Dialect kMariadb = {
    .product = u"MariaDB",
    .textCalls = TextCalls::Wide,
    .connectionDefaults = kDefaults,
    .sessionSetup = kSessionSetup,
    .syntax = {.backtickNames = true, .hashComments = true},
    .identity = u"",
    .quotedDatesAreTranslated = true,
    .types = kTypes,
    .singlesAreReadAsNumbers = true,
    .ownReading = Read,
    .errors = kErrors,
};

}  // namespace odbc
