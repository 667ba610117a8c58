// Any bytes as a statement or a connection string, through the dialect pass. The first byte chooses
// the product, and whether the columns are dates.
#include <array>
#include <string>

#include "automation/automation_error.h"
#include "fuzz/world.h"
#include "odbc/connection_text.h"
#include "odbc/translation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) {
    return 0;
  }
  static constexpr std::array<const char16_t*, 4> products = {u"SQLite", u"PostgreSQL", u"unknown",
                                                              u"MariaDB"};
  const odbc::Dialect& dialect = odbc::DialectOf(products.at(data[0] % products.size()));
  const bool isDate = (data[0] & 128U) != 0;
  const std::u16string text = fuzz::Latin1(data + 1, size - 1);

  std::u16string joined;
  for (const auto& token : odbc::Tokenize(text, dialect.syntax)) {
    fuzz::Require(!token.text.empty());
    joined += token.text;
  }
  fuzz::Require(joined == text);
  const auto translate = [&](const std::u16string& statement) {
    return odbc::Translate(statement, dialect, [&](auto, auto) { return isDate; });
  };
  const std::u16string once = translate(text);
  fuzz::Require(translate(once) == once);

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
