// Passes every call on to a real database through an interceptor.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/database.h"

namespace fakes {

enum class DatabaseCall {
  NewObject,
  SetConnectionString,
  OpenConnection,
  Statement,
  BeginTrans,
  CommitTrans,
  RollbackTrans,
  // Every other recordset call: not its statement, fields or closing.
  Cursor,
  Field,
  Rows,
  CloseRecordset
};

class DatabaseInterceptor {
 public:
  virtual ~DatabaseInterceptor() = default;
  // Runs `work`, raises an error, or both. `statement` is empty for all other calls.
  virtual void On(DatabaseCall call, const std::u16string& statement,
                  const std::function<void()>& work) = 0;

  // The result of the work.
  template <class Work>
  auto Pass(DatabaseCall call, const std::u16string& statement, Work work) {
    if constexpr (std::is_void_v<decltype(work())>) {
      On(call, statement, work);
    } else {
      std::optional<decltype(work())> result;
      On(call, statement, [&] { result = work(); });
      return *std::move(result);
    }
  }
  template <class Work>
  auto Pass(DatabaseCall call, Work work) {
    return Pass(call, {}, std::move(work));
  }
};

class InterceptedConnection : public platform::Connection {
 public:
  InterceptedConnection(DatabaseInterceptor& between, std::unique_ptr<platform::Connection> inner)
      : between_(between), inner_(std::move(inner)) {}
  platform::Connection& inner() { return *inner_; }

  void SetConnectionString(const std::u16string& connectionString) override {
    between_.Pass(DatabaseCall::SetConnectionString,
                  [&] { inner_->SetConnectionString(connectionString); });
  }
  void Open(const std::u16string& connectionString, const std::u16string& user,
            const std::u16string& password, std::int32_t options) override {
    between_.Pass(DatabaseCall::OpenConnection,
                  [&] { inner_->Open(connectionString, user, password, options); });
  }
  inline std::unique_ptr<platform::Recordset> Execute(const std::u16string& statement,
                                                      std::int32_t options) override;
  void BeginTrans() override {
    between_.Pass(DatabaseCall::BeginTrans, [&] { inner_->BeginTrans(); });
  }
  void CommitTrans() override {
    between_.Pass(DatabaseCall::CommitTrans, [&] { inner_->CommitTrans(); });
  }
  void RollbackTrans() override {
    between_.Pass(DatabaseCall::RollbackTrans, [&] { inner_->RollbackTrans(); });
  }

 private:
  DatabaseInterceptor& between_;
  std::unique_ptr<platform::Connection> inner_;
};

class InterceptedRecordset : public platform::Recordset {
 public:
  InterceptedRecordset(DatabaseInterceptor& between, std::unique_ptr<platform::Recordset> inner)
      : between_(between), inner_(std::move(inner)) {}

  void SetCursorLocation(platform::CursorLocation location) override {
    between_.Pass(DatabaseCall::Cursor, [&] { inner_->SetCursorLocation(location); });
  }
  void Open(const std::u16string& statement, platform::Connection& connection,
            platform::CursorType cursorType, platform::LockType lockType,
            std::int32_t options) override {
    between_.Pass(DatabaseCall::Statement, statement, [&] {
      inner_->Open(statement, dynamic_cast<InterceptedConnection&>(connection).inner(), cursorType,
                   lockType, options);
    });
  }
  bool Eof() override {
    return between_.Pass(DatabaseCall::Cursor, [&] { return inner_->Eof(); });
  }
  void MoveNext() override {
    between_.Pass(DatabaseCall::Cursor, [&] { inner_->MoveNext(); });
  }
  automation::Value Field(const std::u16string& name) override {
    return between_.Pass(DatabaseCall::Field, [&] { return inner_->Field(name); });
  }
  automation::Value Field(std::int32_t index) override {
    return between_.Pass(DatabaseCall::Field, [&] { return inner_->Field(index); });
  }
  std::vector<automation::Value> GetRows(std::span<const std::u16string_view> names) override {
    return between_.Pass(DatabaseCall::Rows, [&] { return inner_->GetRows(names); });
  }
  void SetField(const std::u16string& name, const automation::Value& value) override {
    between_.Pass(DatabaseCall::Field, [&] { inner_->SetField(name, value); });
  }
  std::unique_ptr<platform::Recordset> Clone(platform::LockType lockType) override {
    return std::make_unique<InterceptedRecordset>(
        between_, between_.Pass(DatabaseCall::Cursor, [&] { return inner_->Clone(lockType); }));
  }
  void Close() override {
    between_.Pass(DatabaseCall::CloseRecordset, [&] { inner_->Close(); });
  }

 private:
  DatabaseInterceptor& between_;
  std::unique_ptr<platform::Recordset> inner_;
};

inline std::unique_ptr<platform::Recordset> InterceptedConnection::Execute(
    const std::u16string& statement, std::int32_t options) {
  return std::make_unique<InterceptedRecordset>(
      between_, between_.Pass(DatabaseCall::Statement, statement,
                              [&] { return inner_->Execute(statement, options); }));
}

// Its own interceptor: a derived class defines what happens in between.
class InterceptedDatabase : public platform::Database, public DatabaseInterceptor {
 public:
  explicit InterceptedDatabase(platform::Database& inner) : inner_(inner) {}
  std::unique_ptr<platform::Connection> NewConnection() override {
    return std::make_unique<InterceptedConnection>(
        *this, Pass(DatabaseCall::NewObject, [&] { return inner_.NewConnection(); }));
  }
  std::unique_ptr<platform::Recordset> NewRecordset() override {
    return std::make_unique<InterceptedRecordset>(
        *this, Pass(DatabaseCall::NewObject, [&] { return inner_.NewRecordset(); }));
  }

 private:
  platform::Database& inner_;
};

}  // namespace fakes
