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
  // Empty texts leave what the stored connection string says. Error 3705 on an open one, 3706 for a
  // provider that is not ODBC's, else the driver's number and text.
  void Open(std::u16string_view connectionString, std::u16string_view user,
            std::u16string_view password);
  // Rolls an open transaction back. Recordsets keep their rows.
  void Close();

  // From here on error 3704 on a closed connection.
  // The rows of a query, read-only, forward-only for a cursor at the server and static for one at
  // the client; a closed recordset for a statement without rows. `affectedRows`, when given,
  // receives how many rows the statement changed.
  AdoRecordset Execute(std::u16string_view statement,
                       CursorLocation location = CursorLocation::Server,
                       std::int64_t* affectedRows = nullptr);
  // Error -2147168237 inside a transaction.
  void BeginTrans();
  // Without a transaction both raise -2147168242. A commit that fails leaves the transaction open.
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
