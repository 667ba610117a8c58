#include "field-tests/test_database.h"

#include <array>
#include <optional>
#include <string_view>

#include "automation/automation_error.h"
#include "automation/conversion.h"
#include "automation/text.h"
#include "com/bstr.h"
#include "com/com_ptr.h"
#include "com/win32.h"
#include "field-tests/core/connection_text.h"
#include "field-tests/core/missing_table.h"
#include "field-tests/core/text.h"
#include "field-tests/wide.h"
#include "schema/fill.h"
#include "schema/rows.h"
#include "windows/ado_database.h"

namespace field_tests {
namespace {

using automation::AutomationError;

// Left while the tables are there, with the names of those that were missing before, so that a
// killed run's can be told from a real host's.
constexpr auto kMark = u"VilnorFieldTests";
constexpr auto kTables = std::to_array<const char16_t*>(
    {u"Vilnor", u"Journal", u"VilnorPasient", u"SEPreRequestEstimateRows", u"SEPrerequest",
     u"Worker", u"company", u"Pasient", u"Postadresseregister",
     // The contract's.
     u"Trial"});

struct Probe {
  const char* product;
  const char16_t* statement;
  std::string_view answer;  // is in the first field
};

constexpr auto kProbes = std::to_array<Probe>({
    {"SQLite", u"select sqlite_version()", "."},
    {"PostgreSQL", u"select version()", "PostgreSQL"},
    {"MariaDB", u"select version()", "MariaDB"},
    {"SQLServer", u"select @@version", "SQL Server"},
    {"Access", u"select format(#2026-02-01#, 'yyyy-mm-dd')", "2026-02-01"},
});

class Session {
 public:
  explicit Session(platform::Connection& connection) : connection_(connection) {}

  // The first field of the first row, nothing if the statement fails.
  std::optional<std::string> Scalar(const std::u16string& statement) {
    try {
      const auto rows = connection_.Execute(statement, platform::kOptionsUnspecified);
      return rows->Eof() ? "" : automation::ToUtf8(automation::ToText(rows->Field(0), {}));
    } catch (const AutomationError&) {
      return std::nullopt;
    }
  }
  bool Run(const std::u16string& statement) {
    try {
      connection_.Execute(statement, platform::kOptionsUnspecified);
      return true;
    } catch (const AutomationError&) {
      return false;
    }
  }
  // Raises Unusable if the database does not tell.
  bool HasTable(const std::u16string& name) {
    try {
      connection_.Execute(u"select * from " + name + u" where 1 = 0",
                          platform::kOptionsUnspecified);
      return true;
    } catch (const AutomationError& error) {
      const std::string text = automation::ToUtf8(error.description());
      if (SaysNoSuchTable(automation::ToUtf8(name), error.number(), text)) {
        return false;
      }
      throw Unusable("Whether the database has a table " + automation::ToUtf8(name) +
                     " cannot be told, so nothing was changed in it: " + text + " (" +
                     std::to_string(error.number()) + ")");
    }
  }

 private:
  platform::Connection& connection_;
};

std::string ProductOf(Session& session) {
  for (const auto& probe : kProbes) {
    const auto answer = session.Scalar(probe.statement);
    if (answer && answer->find(probe.answer) != std::string::npos) {
      return probe.product;
    }
  }
  throw Unusable(
      "The database is not one that the field tests can fill: SQLite, Access, SQL Server, "
      "PostgreSQL or MariaDB.");
}

std::unique_ptr<platform::Connection> Opened(const std::u16string& connectionString) {
  try {
    auto connection = windows::AdoDatabase().NewConnection();
    connection->Open(connectionString, u"", u"", platform::kOptionsUnspecified);
    return connection;
  } catch (const AutomationError& error) {
    throw Unusable("The database cannot be opened: " + automation::ToUtf8(error.description()) +
                   " (" + std::to_string(error.number()) + ")");
  }
}

bool IsMarked(Session& session, const std::u16string& table) {
  const auto name =
      session.Scalar(u"select TableName from VilnorFieldTests where TableName = '" + table + u"'");
  return name && !name->empty();
}

// Every table is missing, or marked already.
bool Mark(Session& session, bool isMarked) {
  bool done = isMarked || session.Run(u"create table VilnorFieldTests (TableName varchar(50))");
  for (const std::u16string table : kTables) {
    done = done &&
           (IsMarked(session, table) ||
            session.Run(u"insert into VilnorFieldTests (TableName) values ('" + table + u"')"));
  }
  return done;
}

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> pieces(1);
  for (const char letter : text) {
    if (letter == separator) {
      pieces.emplace_back();
    } else {
      pieces.back() += letter;
    }
  }
  return pieces;
}

}  // namespace

TestDatabase::TestDatabase(std::u16string connectionString)
    : connectionString_(std::move(connectionString)), connection_(Opened(connectionString_)) {
  Session session(*connection_);
  product_ = ProductOf(session);
  const bool isMarked = session.HasTable(kMark);
  for (const char16_t* const table : kTables) {
    if (!(isMarked && IsMarked(session, table)) && session.HasTable(table)) {
      throw Unusable("The database already has a table " + automation::ToUtf8(table) +
                     ". The field tests replace tables of that name, so give them an empty "
                     "database. Nothing was changed.");
    }
  }
  isOurs_ = true;
  if (!Mark(session, isMarked)) {
    throw Unusable("No table can be created in the database. Use a user who may do that.");
  }
}

TestDatabase::~TestDatabase() {
  Empty();
}

void TestDatabase::Fill() {
  schema::FillHostDatabase(*connection_, product_);
}

std::vector<Table> TestDatabase::Written() {
  std::vector<Table> tables;
  for (const auto& [name, columns] :
       {std::pair(u"Vilnor",
                  u"VilnorId,PID,BID,RID,FHP_ID,CaseId,CaseType,Journal_ID,StatusCode,"
                  u"VilnorUser,RegDate"),
        std::pair(u"Journal", u"ID,PID,Tekst,BID,RID,Dato,KODE,Status,Fakturert,RefTBID"),
        std::pair(u"VilnorPasient", u"PID,UserName")}) {
    Table table = {.name = automation::ToUtf8(name),
                   .columns = Split(automation::ToUtf8(columns), ','),
                   .rows = {}};
    for (const auto& row : schema::Rows(*connection_, columns, name)) {
      table.rows.push_back(Split(automation::ToUtf8(row), '|'));
    }
    tables.push_back(std::move(table));
  }
  return tables;
}

bool TestDatabase::Empty() {
  if (!isOurs_) {
    return true;
  }
  try {
    Session session(*connection_);
    bool isEmpty = true;
    for (const char16_t* const table : kTables) {
      session.Run(std::u16string(u"drop table ") + table);
      isEmpty &= !session.HasTable(table);
    }
    // Last, and only then.
    isOurs_ = !isEmpty || !session.Run(std::u16string(u"drop table ") + kMark);
  } catch (const Unusable&) {
    // It cannot be told what is left.
  }
  return !isOurs_;
}

std::u16string NewAccessDatabase(const std::wstring& file) {
  const std::wstring connection = L"Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + file;
  CLSID catalogClass{};
  com::ComPtr<IDispatch> catalog;
  if (FAILED(CLSIDFromProgID(L"ADOX.Catalog", &catalogClass)) ||
      FAILED(CoCreateInstance(catalogClass, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch,
                              catalog.ReceiveVoid()))) {
    throw Unusable("This computer cannot create an Access database: ADOX is missing.");
  }
  std::wstring name = L"Create";
  LPOLESTR names = name.data();
  DISPID member = 0;
  catalog->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &member);
  VARIANT argument{};
  V_VT(&argument) = VT_BSTR;
  V_BSTR(&argument) = SysAllocString(connection.c_str());
  DISPPARAMS arguments = {
      .rgvarg = &argument, .rgdispidNamedArgs = nullptr, .cArgs = 1, .cNamedArgs = 0};
  const HRESULT result = catalog->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD,
                                         &arguments, nullptr, nullptr, nullptr);
  SysFreeString(V_BSTR(&argument));
  if (FAILED(result)) {
    throw Unusable(
        "This computer cannot create an Access database with Jet, the part of Windows "
        "that does so.");
  }
  return com::FromWide(connection);
}

}  // namespace field_tests
