// An open connection to a data source.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "odbc/cached_rows.h"
#include "odbc/connection_text.h"
#include "odbc/dialect.h"
#include "odbc/handle.h"

namespace odbc {

// Connecting takes no longer than ADO's default ConnectionTimeout, with a driver that knows a
// limit.
inline constexpr std::size_t kLoginTimeoutSeconds = 15;

struct Result {
  // Nothing for a statement without rows.
  std::optional<CachedRows> rows;
  // Rows changed, -1 when the driver does not say.
  std::int64_t affectedRows = -1;
};

// Every failure raises the driver's error.
class Connection {
 public:
  explicit Connection(const ConnectRequest& request);
  // An open transaction is rolled back.
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // The statement in the host's dialect.
  Result Run(std::u16string_view statement);

  void Begin();
  // A commit that fails leaves the transaction open, to be rolled back.
  void Commit();
  // Ends the transaction in any case, also when the server is gone and the error says so.
  void Rollback();

 private:
  Result RunTranslated(std::u16string_view statement);
  bool IsDateColumn(std::u16string_view table, std::u16string_view column);
  void SetAutoCommit(bool on);

  EnvironmentHandle environment_;
  ConnectionHandle handle_;
  // The row of the driver that the string names, or else of the product that answered.
  const Dialect* dialect_;
  bool inTransaction_ = false;
};

}  // namespace odbc
