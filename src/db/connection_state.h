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
  // Created for each operation of BVilnor that needs the database, released when it ends.
  std::shared_ptr<DBVilnor> gDB;
};

// The calling thread's state (one per apartment).
ConnectionState& CurrentConnectionState();

// The shared connection and recordset; a closed one is created if there is none.
platform::Connection& SharedConnection();
platform::Recordset& SharedRecordset();
// Replaces the shared recordset with a new, closed one.
void RenewSharedRecordset();
// Releases both without closing them.
void ReleaseShared();

// Puts a new DBVilnor into gDB, after releasing what an earlier operation left there. Raises 3705
// while another object of the thread is alive (the host's own, or one whose call is still running),
// and takes nothing from that object. The returned reference keeps the object alive during a call:
// a notification dispatched while one of its boxes is open may renew or release gDB.
std::shared_ptr<DBVilnor> RenewGDB();
// The object that RenewGDB made, or a new one if another operation, started by the host or a
// notification, has replaced it since.
std::shared_ptr<DBVilnor> KeptOrRenewed(const std::weak_ptr<DBVilnor>& made);

// gDB as it is; error 91 when it is empty.
std::shared_ptr<DBVilnor> GDB();

// Renews gDB for the duration of a task and releases it afterwards, even after an error: the user's
// next operation must not find the shared connection open.
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
// The same for one call: gDB is released before the caller continues with the call's result.
template <class Call>
auto WithGDB(Call call) {
  const GDBUse use;
  const auto gDB = GDB();
  return call(*gDB);
}
void ReleaseGDB();

}  // namespace db
