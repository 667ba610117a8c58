// The Database port of the native build: ADO's semantics over unixODBC.
#pragma once

#include <memory>

#include "platform/database.h"

namespace native {

class OdbcDatabase : public platform::Database {
 public:
  std::unique_ptr<platform::Connection> NewConnection() override;
  std::unique_ptr<platform::Recordset> NewRecordset() override;
};

}  // namespace native
