#include "db/connection_state.h"

#include <utility>

#include "automation/automation_error.h"
#include "platform/platform.h"
#include "platform/thread_state.h"

namespace db {
namespace {

std::unique_ptr<platform::Recordset> NewClientRecordset() {
  auto recordset = platform::Current().database.NewRecordset();
  recordset->SetCursorLocation(platform::CursorLocation::Client);
  return recordset;
}

}  // namespace

ConnectionState& CurrentConnectionState() {
  return platform::ThreadState<ConnectionState>();
}

platform::Connection& SharedConnection() {
  auto& connection = CurrentConnectionState().gConnection;
  if (!connection) {
    connection = platform::Current().database.NewConnection();
  }
  return *connection;
}

platform::Recordset& SharedRecordset() {
  auto& recordset = CurrentConnectionState().gRecordset;
  if (!recordset) {
    recordset = NewClientRecordset();
  }
  return *recordset;
}

void RenewSharedRecordset() {
  CurrentConnectionState().gRecordset = NewClientRecordset();
}

void ReleaseShared() {
  CurrentConnectionState().gConnection.reset();
  CurrentConnectionState().gRecordset.reset();
}

std::shared_ptr<DBVilnor> RenewGDB() {
  auto& gDB = CurrentConnectionState().gDB;
  const std::weak_ptr<DBVilnor> older = gDB;
  gDB.reset();
  try {
    gDB = std::make_shared<DBVilnor>();
  } catch (...) {
    gDB = older.lock();  // alive only when a call on it is still running
    throw;
  }
  return gDB;
}

std::shared_ptr<DBVilnor> KeptOrRenewed(const std::weak_ptr<DBVilnor>& made) {
  auto kept = made.lock();
  return kept ? kept : RenewGDB();
}

GDBUse::~GDBUse() {
  ReleaseGDB();
}

std::shared_ptr<DBVilnor> GDB() {
  const auto& gDB = CurrentConnectionState().gDB;
  if (!gDB) {
    throw automation::AutomationError(automation::RuntimeError::ObjectNotSet);
  }
  return gDB;
}

void ReleaseGDB() {
  CurrentConnectionState().gDB.reset();
}

}  // namespace db
