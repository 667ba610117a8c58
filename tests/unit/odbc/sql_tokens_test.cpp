#include "odbc/sql_tokens.h"

#include <gmock/gmock.h>
#include <string>

#include "odbc/dialect.h"

namespace odbc {
namespace {

using testing::ElementsAre;
using testing::FieldsAre;

TEST(SqlTokens, TokenKindsAreDistinguished) {
  EXPECT_THAT(
      Tokenize(u"a, 'b' #01-02-2026#", SqlSyntax()),
      ElementsAre(FieldsAre(TokenKind::Word, u"a"), FieldsAre(TokenKind::Symbol, u","),
                  FieldsAre(TokenKind::Space, u" "), FieldsAre(TokenKind::Text, u"'b'"),
                  FieldsAre(TokenKind::Space, u" "), FieldsAre(TokenKind::Date, u"#01-02-2026#")));
}

TEST(SqlTokens, JoinedTokensGiveTheStatementAgain) {
  for (const std::u16string statement :
       {u"",     u"'",    u"''",
        u"'''",  u"\"",   u"[",
        u"[]",   u"`",    u"--",
        u"/*",   u"/**/", u"$",
        u"$$",   u"$$$",  u"$a$ $b$",
        u"E'\\", u"E'",   u"#",
        u"--x",  u"-- ",  u"SELECT 'a''b' FROM [x y] -- c\n WHERE å = 1"}) {
    for (const auto& syntax : {SqlSyntax(), DialectOf(u"SQLite").syntax,
                               DialectOf(u"PostgreSQL").syntax, DialectOf(u"MariaDB").syntax}) {
      std::u16string joined;
      for (const Token& token : Tokenize(statement, syntax)) {
        EXPECT_FALSE(token.text.empty());
        joined += token.text;
      }
      EXPECT_EQ(joined, statement);
    }
  }
}

}  // namespace
}  // namespace odbc
