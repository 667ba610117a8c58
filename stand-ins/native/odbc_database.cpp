#include "native/odbc_database.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>

#include "odbc/ado_connection.h"
#include "odbc/ado_error.h"
#include "odbc/ado_recordset.h"

namespace native {
namespace {

class OdbcConnection : public platform::Connection {
 public:
  odbc::AdoConnection& Ado() { return ado_; }

  void SetConnectionString(const std::u16string& connectionString) override {
    ado_.SetConnectionString(connectionString);
  }
  void Open(const std::u16string& connectionString, const std::u16string& user,
            const std::u16string& password, std::int32_t /*options*/) override {
    ado_.Open(connectionString, user, password);
  }
  std::unique_ptr<platform::Recordset> Execute(const std::u16string& statement,
                                               std::int32_t options) override;
  void BeginTrans() override { ado_.BeginTrans(); }
  void CommitTrans() override { ado_.CommitTrans(); }
  void RollbackTrans() override { ado_.RollbackTrans(); }

 private:
  odbc::AdoConnection ado_;
};

class OdbcRecordset : public platform::Recordset {
 public:
  OdbcRecordset() = default;
  explicit OdbcRecordset(odbc::AdoRecordset ado) : ado_(std::move(ado)) {}

  void SetCursorLocation(platform::CursorLocation location) override {
    ado_.SetCursorLocation(static_cast<odbc::CursorLocation>(location));
  }
  void Open(const std::u16string& statement, platform::Connection& connection,
            platform::CursorType cursorType, platform::LockType lockType,
            std::int32_t /*options*/) override {
    auto* const odbcConnection = dynamic_cast<OdbcConnection*>(&connection);
    if (odbcConnection == nullptr) {
      throw odbc::MakeError(odbc::AdoError::WrongArguments, odbc::kRecordsetSource);
    }
    ado_.Open(statement, odbcConnection->Ado(), static_cast<odbc::CursorType>(cursorType),
              static_cast<odbc::LockType>(lockType));
  }
  bool Eof() override { return ado_.Eof(); }
  void MoveNext() override { ado_.MoveNext(); }
  automation::Value Field(const std::u16string& name) override { return ado_.Field(name); }
  automation::Value Field(std::int32_t index) override {
    // A negative index is as invalid as one past the end.
    return ado_.Field(static_cast<std::size_t>(index));
  }
  std::vector<automation::Value> GetRows(std::span<const std::u16string_view> names) override {
    std::vector<std::size_t> columns;
    std::transform(names.begin(), names.end(), std::back_inserter(columns),
                   [&](std::u16string_view name) { return ado_.IndexOf(name); });
    std::vector<automation::Value> fields;
    for (const odbc::Row& row : ado_.TakeRows(ado_.RowCount())) {
      std::transform(columns.begin(), columns.end(), std::back_inserter(fields),
                     [&](std::size_t column) { return row[column]; });
    }
    return fields;
  }
  void SetField(const std::u16string& name, const automation::Value& value) override {
    ado_.SetField(name, value);
  }
  std::unique_ptr<platform::Recordset> Clone(platform::LockType lockType) override {
    return std::make_unique<OdbcRecordset>(ado_.Clone(static_cast<odbc::LockType>(lockType)));
  }
  void Close() override { ado_.Close(); }

 private:
  odbc::AdoRecordset ado_;
};

std::unique_ptr<platform::Recordset> OdbcConnection::Execute(const std::u16string& statement,
                                                             std::int32_t /*options*/) {
  return std::make_unique<OdbcRecordset>(ado_.Execute(statement));
}

}  // namespace

std::unique_ptr<platform::Connection> OdbcDatabase::NewConnection() {
  return std::make_unique<OdbcConnection>();
}

std::unique_ptr<platform::Recordset> OdbcDatabase::NewRecordset() {
  return std::make_unique<OdbcRecordset>();
}

}  // namespace native
