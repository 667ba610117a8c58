#include "odbc/translation.h"

#include <cstddef>
#include <optional>
#include <vector>

#include "automation/text.h"
#include "odbc/date_literal.h"
#include "odbc/date_target.h"

namespace odbc {
namespace {

constexpr std::u16string_view kIdentity = u"@@Identity";

std::u16string Quoted(const std::u16string& text) {
  return u"'" + text + u"'";
}

// Without the quote (or #) at either end.
std::u16string_view Inside(std::u16string_view text) {
  return text.size() < 2 ? std::u16string_view() : text.substr(1, text.size() - 2);
}

// The ISO form of a quoted date that a date column receives.
std::optional<std::u16string> QuotedDate(const std::vector<Token>& tokens, std::size_t position,
                                         const IsDateColumn& isDateColumn) {
  const auto iso = IsoFromHostDate(Inside(tokens[position].text));
  if (!iso) {
    return std::nullopt;
  }
  const auto target = TargetOf(tokens, position);
  return target && isDateColumn(target->table, target->column) ? std::optional(Quoted(*iso))
                                                               : std::nullopt;
}

// The replacement for a token; nullopt if it stays.
std::optional<std::u16string> Replacement(const std::vector<Token>& tokens, std::size_t position,
                                          const Dialect& dialect,
                                          const IsDateColumn& isDateColumn) {
  const Token& token = tokens[position];
  if (token.kind == TokenKind::Date) {
    return Quoted(*IsoFromHostDate(Inside(token.text)));
  }
  if (token.kind == TokenKind::Word && !dialect.identity.empty() &&
      automation::EqualsNoCase(token.text, kIdentity)) {
    return std::u16string(dialect.identity);
  }
  if (token.kind == TokenKind::Text && dialect.quotedDatesAreTranslated) {
    return QuotedDate(tokens, position, isDateColumn);
  }
  return std::nullopt;
}

}  // namespace

std::u16string Translate(std::u16string_view statement, const Dialect& dialect,
                         const IsDateColumn& isDateColumn) {
  if (!IsKnown(dialect)) {
    return std::u16string(statement);
  }
  const auto tokens = Tokenize(statement, dialect.syntax);
  std::u16string translated;
  translated.reserve(statement.size());
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const auto replacement = Replacement(tokens, i, dialect, isDateColumn);
    translated += replacement ? std::u16string_view(*replacement) : tokens[i].text;
  }
  return translated;
}

}  // namespace odbc
