#include "odbc/driver_error.h"

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <vector>

namespace odbc {
namespace {

// A length is a 16-bit number here.
constexpr std::size_t kLongestText = 32767;
constexpr std::size_t kUsualText = 1024;
constexpr std::size_t kStateLength = 5;

// SQLSTATEs that mean the same wherever they occur, longer ones first.
constexpr std::array kStandardErrors = {
    ErrorCode{u"23", {}, ProviderError::IntegrityViolation},
    ErrorCode{u"42S02", {}, ProviderError::NoTable},
    ErrorCode{u"42S01", {}, ProviderError::DuplicateTable},
    ErrorCode{u"42", {}, ProviderError::ErrorsInCommand},
    ErrorCode{u"37", {}, ProviderError::ErrorsInCommand},
    ErrorCode{u"21", {}, ProviderError::ErrorsInCommand},
    ErrorCode{u"22001", {}, ProviderError::DataOverflow},
    ErrorCode{u"22003", {}, ProviderError::DataOverflow},
    ErrorCode{u"22008", {}, ProviderError::DataOverflow},
    ErrorCode{u"22", {}, ProviderError::CannotConvertValue},
    ErrorCode{u"28", {}, ProviderError::AuthenticationFailed},
    ErrorCode{u"HYT", {}, ProviderError::TimeExpired},
};

// The first matching entry.
std::optional<ProviderError> Find(std::span<const ErrorCode> codes, const Diagnostic& diagnostic) {
  const auto found = std::find_if(codes.begin(), codes.end(), [&](const ErrorCode& code) {
    return diagnostic.state.starts_with(code.state) &&
           (!code.native || *code.native == diagnostic.native);
  });
  return found == codes.end() ? std::nullopt : std::optional(found->error);
}

// Trailing line ends would only add blank lines to a message box.
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

ProviderError ErrorOf(const Diagnostic& diagnostic, const Dialect& dialect) {
  const auto own = Find(dialect.errors, diagnostic);
  return own ? *own : Find(kStandardErrors, diagnostic).value_or(ProviderError::Failure);
}

DriverError::DriverError(const Diagnostic& diagnostic, const Dialect& dialect)
    : AutomationError(static_cast<std::int32_t>(ErrorOf(diagnostic, dialect)),
                      std::u16string(kProviderSource),
                      diagnostic.text.empty() ? u"Unspecified error" : diagnostic.text),
      state_(diagnostic.state),
      native_(diagnostic.native) {}

void Check(SQLRETURN result, SQLSMALLINT handleType, SQLHANDLE handle, const Dialect& dialect) {
  if (!SQL_SUCCEEDED(result) && result != SQL_NO_DATA) {
    throw DriverError(FirstDiagnostic(handleType, handle, dialect.textCalls), dialect);
  }
}

}  // namespace odbc
