// ODBC handles, freed with their owner.
#pragma once

#include <utility>

#include "odbc/ado_error.h"
#include "odbc/api.h"
#include "odbc/driver_error.h"

namespace odbc {

template <SQLSMALLINT Type, SQLSMALLINT ParentType>
class Handle {
 public:
  // Raises the parent's error when the driver manager or the driver refuses.
  explicit Handle(SQLHANDLE parent) {
    if (!SQL_SUCCEEDED(SQLAllocHandle(Type, parent, &handle_))) {
      handle_ = SQL_NULL_HANDLE;
      if (parent == SQL_NULL_HANDLE) {
        throw MakeError(ProviderError::Failure, u"The ODBC driver manager cannot be used.");
      }
      throw DriverError(FirstDiagnostic(ParentType, parent, TextCalls::Wide), kUnknownProduct);
    }
  }
  Handle(Handle&& other) noexcept
      : handle_(std::exchange(other.handle_, SQLHANDLE{SQL_NULL_HANDLE})) {}
  Handle& operator=(Handle&& other) noexcept {
    std::swap(handle_, other.handle_);
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() {
    if (handle_ != SQL_NULL_HANDLE) {
      SQLFreeHandle(Type, handle_);
    }
  }

  SQLHANDLE get() const { return handle_; }
  // Raises the driver's error unless `result` is a success or "no data".
  void Check(SQLRETURN result, const Dialect& dialect) const {
    odbc::Check(result, Type, handle_, dialect);
  }

 private:
  SQLHANDLE handle_ = SQL_NULL_HANDLE;
};

using EnvironmentHandle = Handle<SQL_HANDLE_ENV, 0>;
using ConnectionHandle = Handle<SQL_HANDLE_DBC, SQL_HANDLE_ENV>;
using StatementHandle = Handle<SQL_HANDLE_STMT, SQL_HANDLE_DBC>;

}  // namespace odbc
