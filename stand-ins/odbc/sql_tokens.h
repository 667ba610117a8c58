// A statement cut into the pieces that the dialect pass needs to tell apart.
#pragma once

#include <string_view>
#include <vector>

namespace odbc {

// What a product's SQL has beyond '…' texts, "…" names and comments.
struct SqlSyntax {
  // [name] and `name`.
  bool bracketNames = false;
  // E'it\'s' and $tag$…$tag$ texts.
  bool escapeTexts = false;
};

enum class TokenKind {
  Space,  // blanks, line ends and comments
  Word,   // names, keywords, numbers, @@names
  Name,   // a quoted name, quotes included
  Text,   // a quoted text, quotes included
  Date,   // a date literal between two #
  Symbol  // one character of anything else
};

struct Token {
  TokenKind kind;
  std::u16string_view text;
};

// The tokens joined are the statement again. A quote or comment that never ends reaches to the end.
std::vector<Token> Tokenize(std::u16string_view statement, const SqlSyntax& syntax);

}  // namespace odbc
