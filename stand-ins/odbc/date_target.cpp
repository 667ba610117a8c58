#include "odbc/date_target.h"

#include <algorithm>
#include <iterator>

#include "automation/text.h"

namespace odbc {
namespace {

using Tokens = std::vector<Token>;

bool IsWord(const Token& token, std::u16string_view word) {
  return token.kind == TokenKind::Word && automation::EqualsNoCase(token.text, word);
}

bool IsSymbol(const Token& token, char16_t symbol) {
  return token.kind == TokenKind::Symbol && token.text.front() == symbol;
}

bool IsName(const Token& token) {
  return token.kind == TokenKind::Name || token.kind == TokenKind::Word;
}

// The statement's first table: the name after INTO, UPDATE or FROM.
std::optional<std::size_t> FirstTable(const Tokens& tokens) {
  const auto keyword = std::find_if(tokens.begin(), tokens.end(), [](const Token& token) {
    return IsWord(token, u"into") || IsWord(token, u"update") || IsWord(token, u"from");
  });
  const auto position = static_cast<std::size_t>(keyword - tokens.begin()) + 1;
  return position < tokens.size() && IsName(tokens[position]) ? std::optional(position)
                                                              : std::nullopt;
}

// The names between the bracket at `open` and its closing one; empty if anything except names and
// commas is there.
std::vector<std::u16string_view> ColumnList(const Tokens& tokens, std::size_t open) {
  std::vector<std::u16string_view> names;
  for (std::size_t i = open + 1; i + 1 < tokens.size() && IsName(tokens[i]); i += 2) {
    names.push_back(tokens[i].text);
    if (IsSymbol(tokens[i + 1], u')')) {
      return names;
    }
    if (!IsSymbol(tokens[i + 1], u',')) {
      break;
    }
  }
  return {};
}

// How many values precede `position` in the innermost bracket around it, if that bracket directly
// follows VALUES or another row of values.
std::optional<std::size_t> PlaceInValues(const Tokens& tokens, std::size_t position) {
  std::size_t place = 0;
  int depth = 0;
  for (std::size_t i = position; i-- > 0;) {
    if (IsSymbol(tokens[i], u')')) {
      ++depth;
    } else if (IsSymbol(tokens[i], u'(') && depth > 0) {
      --depth;
    } else if (IsSymbol(tokens[i], u'(')) {
      return i > 0 && IsWord(tokens[i - 1], u"values") ? std::optional(place) : std::nullopt;
    } else if (IsSymbol(tokens[i], u',') && depth == 0) {
      ++place;
    }
  }
  return std::nullopt;
}

std::optional<Target> InsertTarget(const Tokens& tokens, std::size_t table, std::size_t position) {
  const bool isWholeValue =
      position + 1 < tokens.size() &&
      (IsSymbol(tokens[position - 1], u',') || IsSymbol(tokens[position - 1], u'(')) &&
      (IsSymbol(tokens[position + 1], u',') || IsSymbol(tokens[position + 1], u')'));
  const auto place = isWholeValue ? PlaceInValues(tokens, position) : std::nullopt;
  if (!place || !IsSymbol(tokens[table + 1], u'(')) {
    return std::nullopt;
  }
  const auto columns = ColumnList(tokens, table + 1);
  return *place < columns.size() ? std::optional(Target{tokens[table].text, columns[*place]})
                                 : std::nullopt;
}

std::optional<Target> ComparedTarget(const Tokens& tokens, std::size_t table,
                                     std::size_t position) {
  const auto isComparison = [](const Token& token) {
    return IsSymbol(token, u'=') || IsSymbol(token, u'<') || IsSymbol(token, u'>') ||
           IsSymbol(token, u'!');
  };
  std::size_t name = position;
  while (name > 0 && isComparison(tokens[name - 1])) {
    --name;
  }
  if (name == position || name == 0 || !IsName(tokens[name - 1])) {
    return std::nullopt;
  }
  return Target{tokens[table].text, tokens[name - 1].text};
}

}  // namespace

std::optional<Target> TargetOf(const std::vector<Token>& tokens, std::size_t position) {
  Tokens solid;
  std::copy_if(tokens.begin(), tokens.end(), std::back_inserter(solid),
               [](const Token& token) { return token.kind != TokenKind::Space; });
  const auto* const start = tokens[position].text.data();
  const auto text = std::find_if(solid.begin(), solid.end(),
                                 [&](const Token& token) { return token.text.data() == start; });
  const auto solidPosition = static_cast<std::size_t>(text - solid.begin());
  const auto table = FirstTable(solid);
  if (!table || *table >= solidPosition) {
    return std::nullopt;
  }
  const auto inserted = InsertTarget(solid, *table, solidPosition);
  return inserted ? inserted : ComparedTarget(solid, *table, solidPosition);
}

}  // namespace odbc
