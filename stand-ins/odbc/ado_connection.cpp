#include "odbc/ado_connection.h"

#include <utility>

#include "odbc/ado_error.h"
#include "odbc/connection_text.h"

namespace odbc {

Connection& AdoConnection::Opened() {
  if (!IsOpen()) {
    throw MakeError(AdoError::ObjectClosed, kConnectionSource);
  }
  return *connection_;
}

void AdoConnection::SetConnectionString(std::u16string_view connectionString) {
  if (IsOpen()) {
    throw MakeError(AdoError::ObjectOpen, kConnectionSource);
  }
  connectionString_ = connectionString;
}

void AdoConnection::Open(std::u16string_view connectionString, std::u16string_view user,
                         std::u16string_view password) {
  if (IsOpen()) {
    throw MakeError(AdoError::ObjectOpen, kConnectionSource);
  }
  if (!connectionString.empty()) {
    connectionString_ = connectionString;
  }
  connection_ = std::make_unique<Connection>(RequestOf(connectionString_, user, password));
}

void AdoConnection::Close() {
  Opened();
  connection_.reset();
}

AdoRecordset AdoConnection::Execute(std::u16string_view statement, CursorLocation location,
                                    std::int64_t* affectedRows) {
  auto result = Run(statement);
  if (affectedRows != nullptr) {
    *affectedRows = result.affectedRows;
  }
  return {std::move(result.rows), location};
}

void AdoConnection::BeginTrans() {
  Opened().Begin();
}

void AdoConnection::CommitTrans() {
  Opened().Commit();
}

void AdoConnection::RollbackTrans() {
  Opened().Rollback();
}

}  // namespace odbc
