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

// Puts a fresh DBVilnor into gDB. What an earlier operation has left there is released first. While
// another object of the thread is alive, the host's own or one whose call is still running, it
// fails (3705), takes nothing from that object, and the error goes to the caller. The reference
// keeps the object for the length of a call: a notification that is dispatched while one of its
// boxes is open may renew or release gDB.
std::shared_ptr<DBVilnor> RenewGDB();
// The object that RenewGDB made, or a fresh one when the host, or a notification, has had another
// operation replace it meanwhile.
std::shared_ptr<DBVilnor> KeptOrRenewed(const std::weak_ptr<DBVilnor>& made);

// Renews gDB for the length of a task and lets go of it at its end, also after an error: the next
// operation of the user must not find the shared connection open.
class GDBUse {
 public:
  GDBUse() : made_(RenewGDB()) {}
  GDBUse(const GDBUse&) = delete;
  GDBUse& operator=(const GDBUse&) = delete;
  ~GDBUse();
  std::shared_ptr<DBVilnor> operator->() const { return KeptOrRenewed(made_); }

 private:
  std::weak_ptr<DBVilnor> made_;
};
// The same for one call: gDB is released before the caller goes on with what the call gave.
template <class Call>
auto WithGDB(Call call) {
  const GDBUse use;
  const auto gDB = use.operator->();
  return call(*gDB);
}
// gDB as it is; error 91 when it is empty.
std::shared_ptr<DBVilnor> GDB();
void ReleaseGDB();

}  // namespace db
