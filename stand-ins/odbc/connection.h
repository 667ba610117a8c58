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

// ADO's default ConnectionTimeout: connecting takes no longer, if the driver supports a limit.
inline constexpr std::size_t kLoginTimeoutSeconds = 15;

struct Result {
  // nullopt for a non-row-returning statement.
  std::optional<CachedRows> rows;
  // Rows changed, -1 if the driver does not say.
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
  // A failed commit leaves the transaction open, to be rolled back.
  void Commit();
  // Always ends the transaction, even if the server is gone and an error is raised.
  void Rollback();

 private:
  Result RunTranslated(std::u16string_view statement);
  bool IsDateColumn(std::u16string_view table, std::u16string_view column);
  void SetAutoCommit(bool on);

  EnvironmentHandle environment_;
  ConnectionHandle handle_;
  // The row of the driver that the string names, otherwise of the connected product.
  const Dialect* dialect_;
  bool inTransaction_ = false;
};

}  // namespace odbc
