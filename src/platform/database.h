// The ADO calls that the component makes, with ADO's states and errors.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "automation/automation_error.h"
#include "automation/value.h"

namespace platform {

// ADO's enumerations, by their ADO numbers.
enum class CursorLocation : std::int32_t { Server = 2, Client = 3 };
enum class CursorType : std::int32_t { ForwardOnly = 0, Keyset = 1, Dynamic = 2, Static = 3 };
enum class LockType : std::int32_t {
  Unspecified = -1,
  ReadOnly = 1,
  Optimistic = 3,
  BatchOptimistic = 4
};
inline constexpr std::int32_t kOptionsUnspecified = -1;

// An ADO Recordset. Every call except Open and SetCursorLocation raises 3704 "Operation is not
// allowed when the object is closed." on a closed one.
class Recordset {
 public:
  virtual ~Recordset() = default;
  // Error 3705 "Operation is not allowed when the object is open." on an open one.
  virtual void SetCursorLocation(CursorLocation location) = 0;
  // Opens on a statement. Error 3705 if it is already open, 3709 if the connection is not open, the
  // provider's own number and text if the statement fails. Opening closes nothing.
  virtual void Open(const std::u16string& statement, class Connection& connection,
                    CursorType cursorType, LockType lockType, std::int32_t options) = 0;
  virtual bool Eof() = 0;
  // Error 3021 at EOF.
  virtual void MoveNext() = 0;
  // The field's value in the current row. Error 3265 if there is no such field, 3021 if there is no
  // current row.
  virtual automation::Value Field(const std::u16string& name) = 0;
  virtual automation::Value Field(std::int32_t index) = 0;
  // The fields of these names in the current row and all later ones, row by row, in one call;
  // leaves the cursor at EOF. Error 3265 if there is no field of one of the names, 3021 if there is
  // no current row; the cursor may then be anywhere.
  virtual std::vector<automation::Value> GetRows(std::span<const std::u16string_view> names) = 0;
  // Writes only to the current record's copy buffer; the database is not updated.
  virtual void SetField(const std::u16string& name, const automation::Value& value) = 0;
  // A separate recordset over the same rows, on the first one; it outlives the source's Close.
  virtual std::unique_ptr<Recordset> Clone(LockType lockType) = 0;
  virtual void Close() = 0;
};

// A lookup's recordset; error 91 if there is none, as the classic runtime raises when an object
// that is not set is used.
inline Recordset& Require(const std::unique_ptr<Recordset>& recordset) {
  if (!recordset) {
    throw automation::AutomationError(automation::RuntimeError::ObjectNotSet);
  }
  return *recordset;
}

// An ADO Connection. Execute and the transaction calls raise 3704 on a closed one.
class Connection {
 public:
  virtual ~Connection() = default;
  // Error 3705 on an open one.
  virtual void SetConnectionString(const std::u16string& connectionString) = 0;
  // Empty texts do not override the connection string. Error 3705 on an open one, otherwise the
  // provider's number and text.
  virtual void Open(const std::u16string& connectionString, const std::u16string& user,
                    const std::u16string& password, std::int32_t options) = 0;
  // The rows of a query; a closed recordset for a non-row-returning statement.
  virtual std::unique_ptr<Recordset> Execute(const std::u16string& statement,
                                             std::int32_t options) = 0;
  virtual void BeginTrans() = 0;
  // Both raise the provider's error outside a transaction.
  virtual void CommitTrans() = 0;
  virtual void RollbackTrans() = 0;
};

// Creates closed objects. Error 429 if the database interface is not installed.
class Database {
 public:
  virtual ~Database() = default;
  virtual std::unique_ptr<Connection> NewConnection() = 0;
  virtual std::unique_ptr<Recordset> NewRecordset() = 0;
};

}  // namespace platform
