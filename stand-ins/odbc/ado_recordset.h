// ADO's Recordset over a result that is held whole: what a client-side, static cursor shows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "automation/value.h"
#include "odbc/cached_rows.h"

namespace odbc {

class AdoConnection;

// ADO's enumerations, by their ADO numbers.
enum class CursorLocation : std::int32_t { Server = 2, Client = 3 };
enum class CursorType : std::int32_t { Unspecified = -1, ForwardOnly = 0, Keyset = 1, Static = 3 };
enum class LockType : std::int32_t {
  Unspecified = -1,
  ReadOnly = 1,
  Pessimistic = 2,
  Optimistic = 3,
  BatchOptimistic = 4
};

// Every call but Open and SetCursorLocation raises 3704 on a closed recordset. The rows are held by
// the recordset and its clones together, so they need neither the connection nor the recordset that
// was opened first.
class AdoRecordset {
 public:
  // Closed.
  AdoRecordset() = default;
  // Read-only on the rows of AdoConnection::Execute; closed without rows.
  AdoRecordset(std::optional<CachedRows> rows, odbc::CursorLocation location);

  bool IsOpen() const { return rows_ != nullptr; }
  odbc::CursorLocation CursorLocation() const { return cursorLocation_; }
  odbc::CursorType CursorType() const { return cursorType_; }
  odbc::LockType LockType() const { return lockType_; }

  // Error 3705 on an open one.
  void SetCursorLocation(odbc::CursorLocation location);
  // Error 3705 on an open one, 3709 when the connection is not open, else the provider's. A
  // statement without rows runs and leaves the recordset closed.
  void Open(std::u16string_view statement, AdoConnection& connection, odbc::CursorType cursorType,
            odbc::LockType lockType);
  void Close();

  bool Bof() const;
  bool Eof() const;
  // Error 3021 behind the last row (before the first one).
  void MoveNext();
  void MovePrevious();
  // Error 3021 when there is no row.
  void MoveFirst();
  void MoveLast();
  std::size_t RowCount() const { return Rows().rows.size(); }
  // From 0. Error 3021 without a current row.
  std::size_t Position() const;
  // Error 3021 for a row that is not there.
  void MoveTo(std::size_t position);

  const std::vector<Column>& Columns() const { return Rows().columns; }
  // Error 3265 for a name that is not there.
  std::size_t IndexOf(std::u16string_view name) const;
  // Error 3265 for a column that is not there, 3021 without a current row.
  automation::Value Field(std::size_t index) const;
  automation::Value Field(std::u16string_view name) const { return Field(IndexOf(name)); }
  // Writes to the record in hand. With a batch lock, moving on or Update hands the record to the
  // shared rows, where clones see it, and Close forgets what was not handed over; the database is
  // never written. With a lock that would write the database at that point, moving on and Update
  // raise 3251 and Close raises 3219. Error 3251 on a read-only recordset, 3421 for a value of
  // another type than the column's.
  void SetField(std::size_t index, const automation::Value& value);
  void SetField(std::u16string_view name, const automation::Value& value) {
    SetField(IndexOf(name), value);
  }
  bool EditInProgress() const { return edited_.has_value(); }
  void Update();
  void CancelUpdate();

  // On the same rows, on the first of them, with this one's lock when `lockType` is unspecified.
  // Error 3251 for a forward-only cursor, which has no bookmarks to clone.
  AdoRecordset Clone(odbc::LockType lockType) const;

 private:
  // Error 3704 on a closed one.
  const CachedRows& Rows() const;
  // Error 3021 without one.
  const Row& CurrentRow() const;
  void Show(CachedRows rows, odbc::CursorType cursorType, odbc::LockType lockType);
  void LeaveRow();

  std::shared_ptr<CachedRows> rows_;
  // Before the first row: -1; behind the last: their number.
  std::ptrdiff_t position_ = 0;
  std::optional<Row> edited_;
  odbc::CursorLocation cursorLocation_ = odbc::CursorLocation::Server;
  odbc::CursorType cursorType_ = odbc::CursorType::ForwardOnly;
  odbc::LockType lockType_ = odbc::LockType::ReadOnly;
};

}  // namespace odbc
