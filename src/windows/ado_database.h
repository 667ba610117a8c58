#pragma once

#include "com/com_ptr.h"
#include "platform/database.h"

namespace windows {

// The database through ADO, with the provider that the host's connection string names. Errors carry
// ADO's number, source and text.
class AdoDatabase : public platform::Database {
 public:
  std::unique_ptr<platform::Connection> NewConnection() override;
  std::unique_ptr<platform::Recordset> NewRecordset() override;
};

// The ADO recordset behind a recordset created by an AdoDatabase or one of its connections.
com::ComPtr<IDispatch> DispatchOf(platform::Recordset& recordset);

}  // namespace windows
