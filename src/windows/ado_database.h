#pragma once

#include "com/com_ptr.h"
#include "platform/database.h"

namespace windows {

// The database by ADO, with whatever provider the host's connection string names. Errors carry the
// number, source and text that ADO gives.
class AdoDatabase : public platform::Database {
 public:
  std::unique_ptr<platform::Connection> NewConnection() override;
  std::unique_ptr<platform::Recordset> NewRecordset() override;
};

// The ADO recordset behind a recordset that an AdoDatabase, or one of its connections, made.
com::ComPtr<IDispatch> DispatchOf(platform::Recordset& recordset);

}  // namespace windows
