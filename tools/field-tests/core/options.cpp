#include "field-tests/core/options.h"

#include "field-tests/core/text.h"

namespace field_tests {

const char* const kUsage =
    "run.cmd [\"CONNECTION STRING\" | access] [/quick] [/user] [/restore]\n"
    "\n"
    "  CONNECTION STRING  of an empty test database, for ADO: SQLite, Access or SQL Server. Its\n"
    "                     tables are removed at the end.\n"
    "  access             creates an empty Access database with the parts of Windows itself\n"
    "  /quick             a sample of the tests, in about a minute\n"
    "  /user              without the tests that need administrator rights\n"
    "  /restore           only puts back what a run that was ended left behind\n"
    "\n"
    "Exit code: 0 all passed, 1 something failed, 2 could not begin.\n";

Options ParseOptions(const std::vector<std::string>& words) {
  Options options;
  bool hasDatabase = false;
  for (const auto& word : words) {
    const std::string lower = Lower(word);
    if (lower == "/?" || lower == "--help") {
      options.help = true;
    } else if (lower == "/quick") {
      options.quick = true;
    } else if (lower == "/user") {
      options.asUser = true;
    } else if (lower == "/restore") {
      options.restoreOnly = true;
    } else if (lower.starts_with('/')) {
      throw UsageError("There is no option " + word + ".");
    } else if (hasDatabase) {
      throw UsageError("A connection string needs quotation marks around it.");
    } else {
      SetDatabase(options, word);
      hasDatabase = true;
    }
  }
  return options;
}

void SetDatabase(Options& options, const std::string& answer) {
  std::string text = Trimmed(answer);
  if (text.size() > 1 && text.front() == '"' && text.back() == '"') {
    text = Trimmed(text.substr(1, text.size() - 2));
  }
  if (Lower(text) == "access") {
    options.newAccess = true;
  } else if (text.empty() || text.find('=') != std::string::npos) {
    options.connection = text;
  } else {
    // Not repeated: it may be a password.
    throw UsageError(
        "That is no connection string: it has no \"=\". An example: "
        "\"Driver=SQLite3 ODBC Driver;Database=C:\\Temp\\empty.db\"");
  }
}

}  // namespace field_tests
