// ADO's Connection over ODBC.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "odbc/ado_recordset.h"
#include "odbc/connection.h"

namespace odbc {

class AdoConnection {
 public:
  bool IsOpen() const { return connection_ != nullptr; }

  const std::u16string& ConnectionString() const { return connectionString_; }
  // Error 3705 on an open one.
  void SetConnectionString(std::u16string_view connectionString);
  // Empty texts do not override the stored connection string. Error 3705 on an open one, 3706 for a
  // provider other than ODBC's, otherwise the driver's number and text.
  void Open(std::u16string_view connectionString, std::u16string_view user,
            std::u16string_view password);
  // Rolls back an open transaction. Recordsets keep their rows.
  void Close();

  // All calls below raise 3704 on a closed connection.
  // The rows of a query, read-only: forward-only with a server-side cursor, static with a
  // client-side one; a closed recordset for a non-row-returning statement. `affectedRows`, if
  // given, receives the number of rows that the statement changed.
  AdoRecordset Execute(std::u16string_view statement,
                       CursorLocation location = CursorLocation::Server,
                       std::int64_t* affectedRows = nullptr);
  // Error -2147168237 inside a transaction.
  void BeginTrans();
  // Both raise -2147168242 outside a transaction. A failed commit leaves the transaction open.
  void CommitTrans();
  void RollbackTrans();

 private:
  friend class AdoRecordset;
  Result Run(std::u16string_view statement) { return Opened().Run(statement); }
  Connection& Opened();

  std::u16string connectionString_;
  std::unique_ptr<Connection> connection_;
};

}  // namespace odbc
