// A statement cut into the pieces that the dialect pass needs to tell apart.
#pragma once

#include <string_view>
#include <vector>

namespace odbc {

// What a product's SQL has beyond '…' texts, "…" names and comments.
struct SqlSyntax {
  // [name]
  bool bracketNames = false;
  // `name`
  bool backtickNames = false;
  // E'it\'s' and $tag$…$tag$ texts.
  bool escapeTexts = false;
  // A # that begins no date begins a comment, and -- only in front of a blank.
  bool hashComments = false;
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
