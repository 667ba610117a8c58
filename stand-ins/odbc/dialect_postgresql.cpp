#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "odbc/dialects.h"

namespace odbc {
namespace {

constexpr std::array<std::u16string_view, 1> kSessionSetup = {u"SET DateStyle TO 'ISO, MDY'"};

constexpr std::array kErrors = {
    ErrorCode{u"42P01", {}, ProviderError::NoTable},
    ErrorCode{u"42P07", {}, ProviderError::DuplicateTable},
    ErrorCode{u"42501", {}, ProviderError::PermissionDenied},
    ErrorCode{u"55", {}, ProviderError::ErrorsInCommand},
    ErrorCode{u"57014", {}, ProviderError::TimeExpired},
};

// Converts an amount as the server's locale prints it ("$1,234.50", "(1.50)", "1.234,50 kr") to a
// plain number: the last point or comma is the decimal separator if one or two digits follow it.
std::u16string PlainAmount(std::u16string_view printed) {
  const auto isDigit = [](char16_t unit) { return unit >= u'0' && unit <= u'9'; };
  const auto separator = printed.find_last_of(u".,");
  const auto behind = separator == std::u16string_view::npos
                          ? 0
                          : std::count_if(printed.begin() + static_cast<std::ptrdiff_t>(separator),
                                          printed.end(), isDigit);
  std::u16string plain = printed.find_first_of(u"-(") == std::u16string_view::npos ? u"" : u"-";
  for (std::size_t i = 0; i < printed.size(); ++i) {
    if (i == separator && behind > 0 && behind <= 2) {
      plain += u'.';
    } else if (isDigit(printed[i])) {
      plain += printed[i];
    }
  }
  return plain;
}

std::optional<automation::Value> ReadAmount(std::u16string_view text, ColumnKind kind) {
  if (kind != ColumnKind::Currency || ParseCurrency(text)) {
    return std::nullopt;
  }
  const auto amount = ParseCurrency(PlainAmount(text));
  return amount ? std::optional<automation::Value>(*amount) : std::nullopt;
}

}  // namespace

constinit const Dialect kPostgresql = {
    .product = u"PostgreSQL",
    .textCalls = TextCalls::Wide,
    .connectionDefaults = {},
    .sessionSetup = kSessionSetup,
    .syntax = {.escapeTexts = true},
    .identity = u"lastval()",
    .quotedDatesAreTranslated = false,
    .types = {},
    .singlesAreReadAsNumbers = false,
    .ownReading = ReadAmount,
    .errors = kErrors,
};

}  // namespace odbc
