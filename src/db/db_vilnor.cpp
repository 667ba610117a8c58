#include "db/db_vilnor.h"

#include "db/connection_state.h"
#include "util/session.h"

namespace db {

DBVilnor::DBVilnor() {
  try {
    InitConnection();
  } catch (...) {
    ReleaseShared();
    throw;
  }
}

// Kept: objects of the thread that are still alive lose the connection, too.
DBVilnor::~DBVilnor() {
  ReleaseShared();
}

void DBVilnor::InitConnection() {
  platform::Connection& connection = SharedConnection();
  connection.SetConnectionString(util::CurrentSession().gConnectionParameter);
  connection.Open({}, {}, {}, platform::kOptionsUnspecified);
  RenewSharedRecordset();
}

}  // namespace db
