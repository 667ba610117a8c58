#include "db/db_vilnor.h"

#include "db/connection_state.h"
#include "util/error_trap.h"
#include "util/session_settings.h"

namespace db {

namespace {

// Kept: raises 3705 if another object has the connection open; a host creates one object at a time.
void SetConnectionString() {
  SharedConnection().SetConnectionString(util::CurrentSettings().gConnectionParameter);
}

void OpenConnection() {
  SharedConnection().Open({}, {}, {}, platform::kOptionsUnspecified);
  RenewSharedRecordset();
}

}  // namespace

DBVilnor::DBVilnor() {
  util::WithoutTrap(u"DBVilnor", [] {
    // Released after a failure only if it is this object's: made here, or found closed.
    bool ours = !CurrentConnectionState().gConnection;
    try {
      SetConnectionString();
      ours = true;
      OpenConnection();
    } catch (...) {
      if (ours) {
        ReleaseShared();
      }
      throw;
    }
  });
}

// Kept: the thread's other objects lose the connection, too.
DBVilnor::~DBVilnor() {
  ReleaseShared();
}

void DBVilnor::InitConnection() {
  util::WithoutTrap(u"InitConnection", [] {
    SetConnectionString();
    OpenConnection();
  });
}

}  // namespace db
