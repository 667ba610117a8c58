// Splits a statement into the tokens that its translation distinguishes.
#pragma once

#include <string_view>
#include <vector>

namespace odbc {

// Syntax that a product's SQL has beyond '…' texts, "…" names and comments.
struct SqlSyntax {
  // [name]
  bool bracketNames = false;
  // `name`
  bool backtickNames = false;
  // E'it\'s' and $tag$…$tag$ texts.
  bool escapeTexts = false;
  // A # begins a comment unless it begins a date; -- does so only before a blank.
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

// Joined, the tokens are the statement again. An unterminated quote or comment runs to the end.
std::vector<Token> Tokenize(std::u16string_view statement, const SqlSyntax& syntax);

}  // namespace odbc
