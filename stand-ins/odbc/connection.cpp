#include "odbc/connection.h"

#include <array>
#include <string>

#include "odbc/statement.h"
#include "odbc/translation.h"

namespace odbc {
namespace {

EnvironmentHandle NewEnvironment() {
  EnvironmentHandle environment(SQL_NULL_HANDLE);
  environment.Check(
      SQLSetEnvAttr(environment.get(), SQL_ATTR_ODBC_VERSION, AsPointer(SQL_OV_ODBC3), 0),
      kUnknownProduct);
  return environment;
}

std::u16string ProductName(const ConnectionHandle& connection) {
  std::array<SQLWCHAR, 128> name{};
  SQLSMALLINT bytes = 0;
  connection.Check(SQLGetInfoW(connection.get(), SQL_DBMS_NAME, name.data(),
                               static_cast<SQLSMALLINT>(sizeof(name)), &bytes),
                   kUnknownProduct);
  return FromWide(name.data(), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
}

// The driver's connection, disconnected if setting it up fails.
class DisconnectOnFailure {
 public:
  explicit DisconnectOnFailure(const ConnectionHandle& handle) : handle_(handle) {}
  DisconnectOnFailure(const DisconnectOnFailure&) = delete;
  DisconnectOnFailure& operator=(const DisconnectOnFailure&) = delete;
  ~DisconnectOnFailure() {
    if (!kept_) {
      SQLDisconnect(handle_.get());
    }
  }
  void Keep() { kept_ = true; }

 private:
  const ConnectionHandle& handle_;
  bool kept_ = false;
};

}  // namespace

Connection::Connection(const ConnectRequest& request)
    : environment_(NewEnvironment()), handle_(environment_.get()), dialect_(&request.dialect) {
  SQLSetConnectAttrW(handle_.get(), SQL_ATTR_LOGIN_TIMEOUT, AsPointer(kLoginTimeoutSeconds), 0);
  const SQLRETURN connected = WithCalls(dialect_->textCalls, [&]<class Calls>(Calls /*calls*/) {
    auto text = Calls::Encode(request.text);
    return Calls::Connect(handle_.get(), nullptr, text.data(), SQLSMALLINT{SQL_NTS}, nullptr,
                          SQLSMALLINT{0}, nullptr, SQLUSMALLINT{SQL_DRIVER_NOPROMPT});
  });
  handle_.Check(connected, *dialect_);
  DisconnectOnFailure setUp(handle_);
  if (!IsKnown(*dialect_)) {
    dialect_ = &DialectOf(ProductName(handle_));
  }
  for (const auto statement : dialect_->sessionSetup) {
    RunTranslated(statement);
  }
  setUp.Keep();
}

Connection::~Connection() {
  if (inTransaction_) {
    SQLEndTran(SQL_HANDLE_DBC, handle_.get(), SQL_ROLLBACK);
  }
  SQLDisconnect(handle_.get());
}

Result Connection::Run(std::u16string_view statement) {
  return RunTranslated(Translate(statement, *dialect_,
                                 [this](std::u16string_view table, std::u16string_view column) {
                                   return IsDateColumn(table, column);
                                 }));
}

Result Connection::RunTranslated(std::u16string_view statement) {
  Statement running(handle_, *dialect_);
  running.Execute(statement);
  Result result;
  if (running.Columns().empty()) {
    result.affectedRows = running.AffectedRows();
  } else {
    result.rows = running.FetchAll();
  }
  return result;
}

// Asks the product with a query that returns no rows. An unknown name is not a date column; the
// statement that uses it fails on its own.
bool Connection::IsDateColumn(std::u16string_view table, std::u16string_view column) {
  try {
    Statement probe(handle_, *dialect_);
    probe.Execute(u"SELECT " + std::u16string(column) + u" FROM " + std::u16string(table) +
                  u" WHERE 1=0");
    return probe.Columns().front().kind == ColumnKind::Date;
  } catch (const DriverError& error) {
    if (error.Is(ProviderError::ErrorsInCommand) || error.Is(ProviderError::NoTable)) {
      return false;
    }
    throw;
  }
}

void Connection::SetAutoCommit(bool on) {
  handle_.Check(SQLSetConnectAttrW(handle_.get(), SQL_ATTR_AUTOCOMMIT,
                                   AsPointer(on ? SQL_AUTOCOMMIT_ON : SQL_AUTOCOMMIT_OFF), 0),
                *dialect_);
}

void Connection::Begin() {
  if (inTransaction_) {
    throw MakeError(ProviderError::TransactionExists,
                    u"Only one transaction can be active on this session.");
  }
  SetAutoCommit(false);
  inTransaction_ = true;
}

void Connection::Commit() {
  if (!inTransaction_) {
    throw MakeError(ProviderError::NoTransaction, u"No transaction is active.");
  }
  handle_.Check(SQLEndTran(SQL_HANDLE_DBC, handle_.get(), SQL_COMMIT), *dialect_);
  inTransaction_ = false;
  SetAutoCommit(true);
}

void Connection::Rollback() {
  if (!inTransaction_) {
    throw MakeError(ProviderError::NoTransaction, u"No transaction is active.");
  }
  inTransaction_ = false;
  const SQLRETURN ended = SQLEndTran(SQL_HANDLE_DBC, handle_.get(), SQL_ROLLBACK);
  // The next call would clear it.
  const Diagnostic failure = FirstDiagnostic(SQL_HANDLE_DBC, handle_.get(), dialect_->textCalls);
  const SQLRETURN restored =
      SQLSetConnectAttrW(handle_.get(), SQL_ATTR_AUTOCOMMIT, AsPointer(SQL_AUTOCOMMIT_ON), 0);
  if (!SQL_SUCCEEDED(ended)) {
    throw DriverError(failure, *dialect_);
  }
  handle_.Check(restored, *dialect_);
}

}  // namespace odbc
