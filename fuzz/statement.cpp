// A statement or a connection string of any content, through the dialect pass.
#include <string>

#include "automation/automation_error.h"
#include "fuzz/world.h"
#include "odbc/connection_text.h"
#include "odbc/dialect.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::u16string text = fuzz::Latin1(data, size);
  for (const auto* product : {u"SQLite", u"PostgreSQL", u"unknown"}) {
    const odbc::Dialect& dialect = odbc::DialectOf(product);
    std::u16string joined;
    for (const auto& token : odbc::Tokenize(text, dialect.syntax)) {
      fuzz::Require(!token.text.empty());
      joined += token.text;
    }
    fuzz::Require(joined == text);
    for (const bool isDate : {false, true}) {
      const auto translate = [&](const std::u16string& statement) {
        return odbc::Translate(statement, dialect, [&](auto, auto) { return isDate; });
      };
      const std::u16string once = translate(text);
      fuzz::Require(translate(once) == once);
    }
  }

  odbc::ConnectionText connection(text);
  connection.Set(u"key", text);
  fuzz::Require(odbc::ConnectionText(connection.Text()).Find(u"key") == text);
  try {
    odbc::RequestOf(text, u"", u"");
  } catch (const automation::AutomationError& error) {
    fuzz::Require(error.number() == 3706);
  }
  return 0;
}
