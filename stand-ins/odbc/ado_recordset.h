// ADO's Recordset over a result held completely in memory, like a client-side, static cursor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
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

// Every call except Open and SetCursorLocation raises 3704 on a closed recordset. A recordset and
// its clones share the rows, so they need neither the connection nor the recordset that was opened
// first.
class AdoRecordset {
 public:
  // Closed.
  AdoRecordset() = default;
  // Read-only over the rows of AdoConnection::Execute; closed if `rows` is nullopt.
  AdoRecordset(std::optional<CachedRows> rows, odbc::CursorLocation location);

  bool IsOpen() const { return rows_ != nullptr; }
  odbc::CursorLocation CursorLocation() const { return cursorLocation_; }
  odbc::CursorType CursorType() const { return cursorType_; }
  odbc::LockType LockType() const { return lockType_; }

  // Error 3705 on an open one.
  void SetCursorLocation(odbc::CursorLocation location);
  // Error 3705 on an open one, 3709 if the connection is not open, otherwise the provider's. A
  // non-row-returning statement runs and leaves the recordset closed.
  void Open(std::u16string_view statement, AdoConnection& connection, odbc::CursorType cursorType,
            odbc::LockType lockType);
  void Close();

  bool Bof() const;
  bool Eof() const;
  // Error 3021 at EOF (MovePrevious: at BOF).
  void MoveNext();
  void MovePrevious();
  // Error 3021 if there are no rows.
  void MoveFirst();
  void MoveLast();
  std::size_t RowCount() const { return Rows().rows.size(); }
  // From 0. Error 3021 without a current row.
  std::size_t Position() const;
  // Error 3021 if there is no such row.
  void MoveTo(std::size_t position);

  const std::vector<Column>& Columns() const { return Rows().columns; }
  // Error 3265 if there is no column of that name.
  std::size_t IndexOf(std::u16string_view name) const;
  // Error 3265 if there is no such column, 3021 if there is no current row.
  automation::Value Field(std::size_t index) const;
  automation::Value Field(std::u16string_view name) const { return Field(IndexOf(name)); }
  // The current row and those after it, at most `most`; the cursor moves past them. Error 3021 if
  // there is no current row.
  std::span<const Row> TakeRows(std::size_t most);
  // Writes to the current record's copy buffer. With a batch lock, moving on or Update stores the
  // buffer in the shared rows, where clones see it, and Close discards what was not stored; the
  // database is never written. With a lock that would write to the database at that point, moving
  // on and Update raise 3251 and Close raises 3219. Error 3251 on a read-only recordset, 3421 for a
  // value of a type other than the column's.
  void SetField(std::size_t index, const automation::Value& value);
  void SetField(std::u16string_view name, const automation::Value& value) {
    SetField(IndexOf(name), value);
  }
  bool EditInProgress() const { return edited_.has_value(); }
  void Update();
  void CancelUpdate();

  // Over the same rows, on the first one, with this one's lock if `lockType` is unspecified. Error
  // 3251 for a forward-only cursor, which has no bookmarks to clone.
  AdoRecordset Clone(odbc::LockType lockType) const;

 private:
  // Error 3704 on a closed one.
  const CachedRows& Rows() const;
  // Error 3021 if there is none.
  const Row& CurrentRow() const;
  void Show(CachedRows rows, odbc::CursorType cursorType, odbc::LockType lockType);
  void LeaveRow();

  std::shared_ptr<CachedRows> rows_;
  // -1 before the first row; the number of rows after the last.
  std::ptrdiff_t position_ = 0;
  std::optional<Row> edited_;
  odbc::CursorLocation cursorLocation_ = odbc::CursorLocation::Server;
  odbc::CursorType cursorType_ = odbc::CursorType::ForwardOnly;
  odbc::LockType lockType_ = odbc::LockType::ReadOnly;
};

}  // namespace odbc
