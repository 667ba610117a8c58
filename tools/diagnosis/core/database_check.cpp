// The host's database, by the component's own interface to ADO. Only empty queries are run.
#include <exception>

#include "automation/automation_error.h"
#include "automation/text.h"
#include "diagnosis/core/checks.h"
#include "diagnosis/core/connection_string.h"
#include "diagnosis/core/diagnosis.h"
#include "diagnosis/core/host_tables.h"
#include "platform/database.h"

namespace diagnosis {
namespace {

using automation::AutomationError;
using platform::CursorType;
using platform::LockType;

class Tables {
 public:
  Tables(platform::Database& database, platform::Connection& connection)
      : database_(database), connection_(connection) {}

  // Whether the database accepts the query, which finds no row.
  bool Has(const std::u16string& columns, std::u16string_view table) {
    try {
      const auto recordset = database_.NewRecordset();
      recordset->Open(u"SELECT " + columns + u" FROM " + std::u16string(table) + u" WHERE 1 = 0",
                      connection_, CursorType::ForwardOnly, LockType::ReadOnly,
                      platform::kOptionsUnspecified);
      recordset->Close();
      return true;
    } catch (const AutomationError&) {
      return false;
    }
  }

  // The table if it is missing, or its missing columns; "" if it is complete.
  std::u16string MissingOf(const HostTable& table) {
    std::u16string name(table.name);
    if (!Has(u"*", table.name)) {
      return name;
    }
    if (Has(Listed(table, [](auto) { return true; }), table.name)) {
      return {};
    }
    return name + u" (" +
           Listed(table, [&](auto column) { return !Has(std::u16string(column), table.name); }) +
           u")";
  }

 private:
  template <class Chosen>
  static std::u16string Listed(const HostTable& table, Chosen chosen) {
    std::u16string list;
    for (const auto column : table.columns) {
      if (chosen(column)) {
        list += (list.empty() ? u"" : u", ") + std::u16string(column);
      }
    }
    return list;
  }

  platform::Database& database_;
  platform::Connection& connection_;
};

Finding TablesFinding(platform::Database& database, platform::Connection& connection) {
  Tables tables(database, connection);
  std::u16string missing;
  for (const HostTable& table : HostTables()) {
    if (const std::u16string part = tables.MissingOf(table); !part.empty()) {
      missing += (missing.empty() ? u"" : u"; ") + part;
    }
  }
  const Check& check = checks::kDatabaseTables;
  if (missing.empty()) {
    return {check, State::Fine, u"Alla tabeller och kolumner som Vilnor använder finns.", {}};
  }
  return {
      check, State::Fault, u"Saknas, eller får inte läsas av användaren: " + missing,
      u"Uppdatera Kestra Dentals databas, eller ge databasens användare rätt att läsa. Kontrollera "
      u"att anslutningssträngen gäller rätt databas."};
}

}  // namespace

Findings DiagnoseDatabase(platform::Platform& platform, const std::u16string& connection) {
  Findings findings;
  try {
    const auto opened = platform.database.NewConnection();
    opened->Open(connection, {}, {}, platform::kOptionsUnspecified);
    findings.push_back({checks::kDatabase, State::Fine, u"Anslutningen fungerar.", {}});
    findings.push_back(TablesFinding(platform.database, *opened));
  } catch (const AutomationError& error) {
    findings.push_back(
        {checks::kDatabase, State::Fault,
         u"Anslutningen kan inte öppnas: fel " + automation::Decimal10(error.number()) + u", " +
             WithoutValuesOf(connection, error.description()),
         u"Kontrollera anslutningssträngen, att databasservern är igång och att rätt 32-bitars "
         u"drivrutin är installerad."});
  } catch (const std::exception&) {
    // Without its text, which may be a driver's.
    findings.push_back({checks::kDatabase, State::Warning, u"Kontrollen kunde inte slutföras.",
                        u"Kör VilnorCheck igen. Skicka annars rapporten till leverantören."});
  }
  return findings;
}

}  // namespace diagnosis
