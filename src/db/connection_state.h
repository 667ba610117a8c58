// The thread's shared database state, and the component's own DBVilnor.
#pragma once

#include <memory>
#include <string>

#include "db/db_vilnor.h"
#include "platform/database.h"

namespace db {

struct ConnectionState {
  std::unique_ptr<platform::Connection> gConnection;
  std::unique_ptr<platform::Recordset> gRecordset;
  // The last statement built; it outlives the connection.
  std::u16string gSql;
  // Made anew by each operation of BVilnor that needs the database, released at its end.
  std::shared_ptr<DBVilnor> gDB;
};

// The calling thread's state (one an apartment).
ConnectionState& CurrentConnectionState();

// The shared connection and recordset; an unopened one is made when there is none.
platform::Connection& SharedConnection();
platform::Recordset& SharedRecordset();
// Puts a new, closed recordset in the shared one's place.
void RenewSharedRecordset();
// Lets go of both without closing them.
void ReleaseShared();

// Puts a fresh DBVilnor into gDB. The fresh one is made while the older one is still there, so an
// older one with its connection open makes it fail (3705). After a failure gDB is empty, so that
// the next call works again; the error goes to the caller.
// The reference keeps the object for the length of a call: a notification that is dispatched while
// one of its boxes is open may renew or release gDB.
std::shared_ptr<DBVilnor> RenewGDB();
// gDB as it is; error 91 when it is empty.
std::shared_ptr<DBVilnor> GDB();
void ReleaseGDB();

}  // namespace db
