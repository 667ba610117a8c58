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
  // Kept: while another object has the connection open, this raises 3705; a host creates one object
  // at a time.
  platform::Connection& connection = SharedConnection();
  connection.SetConnectionString(util::CurrentSession().gConnectionParameter);
  connection.Open({}, {}, {}, platform::kOptionsUnspecified);
  RenewSharedRecordset();
}

}  // namespace db
