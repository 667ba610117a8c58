#include "schema/fill.h"

#include <algorithm>
#include <cctype>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "schema/host_schema.h"

namespace schema {
namespace {

std::string Lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return text;
}

}  // namespace

void FillHostDatabase(platform::Connection& connection, const std::string& product) {
  connection.BeginTrans();
  for (const auto& statement : HostSchemas().at(Lower(product))) {
    try {
      connection.Execute(automation::FromUtf8(statement), platform::kOptionsUnspecified);
    } catch (const automation::AutomationError&) {
      // Access cannot make this depend on whether the table is there.
      if (!statement.starts_with("DROP TABLE ")) {
        throw;
      }
    }
  }
  connection.CommitTrans();
}

}  // namespace schema
