#include "odbc/sql_tokens.h"

#include <algorithm>
#include <cstddef>

#include "odbc/date_literal.h"

namespace odbc {
namespace {

constexpr auto kNone = std::u16string_view::npos;

bool IsSpace(char16_t unit) {
  return unit == u' ' || unit == u'\t' || unit == u'\r' || unit == u'\n' || unit == u'\f';
}

bool IsWord(char16_t unit) {
  return (unit >= u'0' && unit <= u'9') || (unit >= u'A' && unit <= u'Z') ||
         (unit >= u'a' && unit <= u'z') || unit == u'_' || unit == u'@' || unit == u'$' ||
         unit > 0x7F;
}

// Each call removes the first token from `rest_`.
class Scanner {
 public:
  Scanner(std::u16string_view statement, const SqlSyntax& syntax)
      : rest_(statement), syntax_(syntax) {}

  bool AtEnd() const { return rest_.empty(); }

  Token Next() {
    if (const auto length = DateLength(); length > 0) {
      return Cut(TokenKind::Date, length);
    }
    if (const auto length = SpaceLength(); length > 0) {
      return Cut(TokenKind::Space, length);
    }
    if (const auto length = TextLength(); length > 0) {
      return Cut(TokenKind::Text, length);
    }
    if (const auto length = NameLength(); length > 0) {
      return Cut(TokenKind::Name, length);
    }
    if (IsWord(rest_.front())) {
      return Cut(TokenKind::Word, WordLength());
    }
    return Cut(TokenKind::Symbol, 1);
  }

 private:
  Token Cut(TokenKind kind, std::size_t length) {
    const Token token{kind, rest_.substr(0, length)};
    rest_.remove_prefix(token.text.size());
    return token;
  }

  std::size_t WordLength() const {
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), IsWord);
    return static_cast<std::size_t>(end - rest_.begin());
  }

  bool BeginsLineComment() const {
    if (!syntax_.hashComments) {
      return rest_.starts_with(u"--");
    }
    return rest_.front() == u'#' ||
           (rest_.starts_with(u"--") && (rest_.size() == 2 || rest_[2] <= u' '));
  }

  std::size_t SpaceLength() const {
    if (BeginsLineComment()) {
      return std::min(rest_.find(u'\n'), rest_.size());
    }
    if (rest_.starts_with(u"/*")) {
      const auto end = rest_.find(u"*/", 2);
      return end == kNone ? rest_.size() : end + 2;
    }
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), IsSpace);
    return static_cast<std::size_t>(end - rest_.begin());
  }

  // The end of the quoted text that opens at `start`; a doubled quote stands for itself, and so
  // does a character after a backslash where `backslashes` is set.
  std::size_t QuotedLength(std::size_t start, char16_t quote, bool backslashes) const {
    for (std::size_t i = start + 1; i < rest_.size(); ++i) {
      if (backslashes && rest_[i] == u'\\') {
        ++i;
      } else if (rest_[i] == quote) {
        if (i + 1 == rest_.size() || rest_[i + 1] != quote) {
          return i + 1;
        }
        ++i;
      }
    }
    return rest_.size();
  }

  std::size_t TextLength() const {
    if (rest_.front() == u'\'') {
      return QuotedLength(0, u'\'', false);
    }
    if (syntax_.escapeTexts && (rest_.starts_with(u"E'") || rest_.starts_with(u"e'"))) {
      return QuotedLength(1, u'\'', true);
    }
    return syntax_.escapeTexts && rest_.front() == u'$' ? DollarTextLength() : 0;
  }

  // $tag$…$tag$; 0 when no tag starts here.
  std::size_t DollarTextLength() const {
    const auto tagEnd = rest_.find(u'$', 1);
    if (tagEnd == kNone) {
      return 0;
    }
    const auto tag = rest_.substr(0, tagEnd + 1);
    const auto name = tag.substr(1, tag.size() - 2);
    const bool isTag = std::all_of(name.begin(), name.end(), IsWord) &&
                       (name.empty() || name.front() < u'0' || name.front() > u'9');
    if (!isTag) {
      return 0;
    }
    const auto end = rest_.find(tag, tag.size());
    return end == kNone ? rest_.size() : end + tag.size();
  }

  std::size_t NameLength() const {
    if (rest_.front() == u'"') {
      return QuotedLength(0, u'"', false);
    }
    if (syntax_.backtickNames && rest_.front() == u'`') {
      return QuotedLength(0, u'`', false);
    }
    if (syntax_.bracketNames && rest_.front() == u'[') {
      return std::min(rest_.find(u']'), rest_.size() - 1) + 1;
    }
    return 0;
  }

  // A lone # is an operator in PostgreSQL, so only a whole date literal counts.
  std::size_t DateLength() const {
    const auto end = rest_.front() == u'#' ? rest_.find(u'#', 1) : kNone;
    return end != kNone && IsoFromHostDate(rest_.substr(1, end - 1)) ? end + 1 : 0;
  }

  std::u16string_view rest_;
  SqlSyntax syntax_;
};

}  // namespace

std::vector<Token> Tokenize(std::u16string_view statement, const SqlSyntax& syntax) {
  std::vector<Token> tokens;
  for (Scanner scanner(statement, syntax); !scanner.AtEnd();) {
    tokens.push_back(scanner.Next());
  }
  return tokens;
}

}  // namespace odbc
