// How every operation of DBVilnor talks to the database: one statement at a time over the shared
// connection, a query through the shared recordset.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "db/connection_state.h"
#include "platform/database.h"
#include "platform/procedure.h"
#include "util/error_trap.h"

namespace db {

enum class OpenMode {
  // Static, batch optimistic.
  Static,
  // Keyset, optimistic.
  Keyset,
};

// Kept: statements are concatenated without escaping. A quote in a value breaks its statement, and
// the box shows the provider's error.

// Opens the shared recordset on the statement.
platform::Recordset& OpenQuery(std::u16string statement, OpenMode mode);
// Executes the statement on the shared connection.
void Execute(std::u16string statement);
// Executes the current statement text.
void ExecuteCurrentSql();

// A field of the current row, converted by the runtime's rules to a number or a text; Null raises
// 94.
std::int32_t NumberField(platform::Recordset& row, const std::u16string& field);
std::u16string TextField(platform::Recordset& row, const std::u16string& field);
// A recordset for the caller to keep.
std::unique_ptr<platform::Recordset> CloneOf(platform::Recordset& rows);

// What `take` reads from the query's first row; the empty value if there is no row.
// Kept: without a row the shared recordset stays open, and the next query on the thread fails with
// 3705; the host knows this box. The same holds if `take` fails.
template <class Take>
auto FirstRow(std::u16string statement, OpenMode mode, Take take) {
  platform::Recordset& rows = OpenQuery(std::move(statement), mode);
  decltype(take(rows)) taken{};
  if (!rows.Eof()) {
    taken = take(rows);
    rows.Close();
  }
  return taken;
}

// A query by one key: the procedure, the statement before and after the key, the open mode.
struct Lookup {
  platform::Procedure procedure;
  std::u16string_view beforeKey;
  std::u16string_view afterKey;
  OpenMode mode;
};
std::u16string StatementOf(const Lookup& lookup, std::int32_t key);

// The lookup's first row under the error trap.
template <class Take>
auto TryLookUp(const Lookup& lookup, std::int32_t key, Take take) {
  return util::Try(lookup.procedure, util::kDBVilnorIcon,
                   [&] { return FirstRow(StatementOf(lookup, key), lookup.mode, take); });
}
template <class Take>
auto LookUp(const Lookup& lookup, std::int32_t key, Take take) {
  return TryLookUp(lookup, key, take).OrEmpty();
}

// Runs `body` between BeginTrans and CommitTrans.
template <class Body>
void InTransaction(Body body) {
  SharedConnection().BeginTrans();
  body();
  SharedConnection().CommitTrans();
}

// Runs `body`, which performs a transaction, under the error trap. The rollback comes before the
// box: a box left open over lunch must not keep the tables locked for every other workstation.
// Kept: the rollback also runs if the transaction had not begun; its own error is ignored.
// `afterRollback` runs between the rollback and the box.
template <class Body, class AfterRollback>
util::Attempt<void> TryWrite(platform::Procedure procedure, Body body,
                             AfterRollback afterRollback) {
  return util::Try(procedure, util::kDBVilnorIcon, body, [&] {
    util::IgnoreErrors([] { SharedConnection().RollbackTrans(); });
    afterRollback();
  });
}
template <class Body>
util::Attempt<void> TryWrite(platform::Procedure procedure, Body body) {
  return TryWrite(procedure, body, [] {});
}

}  // namespace db
