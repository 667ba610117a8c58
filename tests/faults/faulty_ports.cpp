#include "faults/faulty_ports.h"

namespace faults {
namespace {

class FaultyConnection;

class FaultyRecordset : public platform::Recordset {
 public:
  FaultyRecordset(FaultPlan& plan, std::unique_ptr<platform::Recordset> inner)
      : plan_(plan), inner_(std::move(inner)) {}
  void SetCursorLocation(platform::CursorLocation location) override {
    plan_.Pass(Call::Cursor);
    inner_->SetCursorLocation(location);
  }
  void Open(const std::u16string& statement, platform::Connection& connection,
            platform::CursorType cursorType, platform::LockType lockType,
            std::int32_t options) override;
  bool Eof() override {
    plan_.Pass(Call::Cursor);
    return inner_->Eof();
  }
  void MoveNext() override {
    plan_.Pass(Call::Cursor);
    inner_->MoveNext();
  }
  automation::Value Field(const std::u16string& name) override {
    plan_.Pass(Call::Field);
    return inner_->Field(name);
  }
  automation::Value Field(std::int32_t index) override {
    plan_.Pass(Call::Field);
    return inner_->Field(index);
  }
  void SetField(const std::u16string& name, const automation::Value& value) override {
    plan_.Pass(Call::Field);
    inner_->SetField(name, value);
  }
  std::unique_ptr<platform::Recordset> Clone(platform::LockType lockType) override {
    plan_.Pass(Call::Cursor);
    return std::make_unique<FaultyRecordset>(plan_, inner_->Clone(lockType));
  }
  void Close() override {
    plan_.Pass(Call::Cursor);
    inner_->Close();
  }

 private:
  FaultPlan& plan_;
  std::unique_ptr<platform::Recordset> inner_;
};

class FaultyConnection : public platform::Connection {
 public:
  FaultyConnection(FaultPlan& plan, std::unique_ptr<platform::Connection> inner)
      : plan_(plan), inner_(std::move(inner)) {}
  platform::Connection& inner() { return *inner_; }
  void SetConnectionString(const std::u16string& connectionString) override {
    plan_.Pass(Call::OpenConnection);
    inner_->SetConnectionString(connectionString);
  }
  void Open(const std::u16string& connectionString, const std::u16string& user,
            const std::u16string& password, std::int32_t options) override {
    plan_.Pass(Call::OpenConnection);
    inner_->Open(connectionString, user, password, options);
  }
  std::unique_ptr<platform::Recordset> Execute(const std::u16string& statement,
                                               std::int32_t options) override {
    plan_.Pass(Call::Statement);
    return std::make_unique<FaultyRecordset>(plan_, inner_->Execute(statement, options));
  }
  void BeginTrans() override {
    plan_.Pass(Call::BeginOrCommit);
    inner_->BeginTrans();
  }
  void CommitTrans() override {
    plan_.Pass(Call::BeginOrCommit);
    inner_->CommitTrans();
  }
  void RollbackTrans() override {
    plan_.Pass(Call::Rollback);
    inner_->RollbackTrans();
  }

 private:
  FaultPlan& plan_;
  std::unique_ptr<platform::Connection> inner_;
};

void FaultyRecordset::Open(const std::u16string& statement, platform::Connection& connection,
                           platform::CursorType cursorType, platform::LockType lockType,
                           std::int32_t options) {
  plan_.Pass(Call::Statement);
  inner_->Open(statement, dynamic_cast<FaultyConnection&>(connection).inner(), cursorType, lockType,
               options);
}

class FaultyDocument : public platform::ResultDocument {
 public:
  FaultyDocument(FaultPlan& plan, std::unique_ptr<platform::ResultDocument> inner)
      : plan_(plan), inner_(std::move(inner)) {}
  void Load(const std::u16string& path) override {
    plan_.Pass(Call::LoadDocument);
    inner_->Load(path);
  }
  platform::ParseError GetParseError() override {
    plan_.Pass(Call::ReadDocument);
    return inner_->GetParseError();
  }
  automation::Value FirstValue(const std::u16string& tagName) override {
    plan_.Pass(Call::ReadDocument);
    return inner_->FirstValue(tagName);
  }

 private:
  FaultPlan& plan_;
  std::unique_ptr<platform::ResultDocument> inner_;
};

}  // namespace

std::unique_ptr<platform::Connection> FaultyDatabase::NewConnection() {
  plan_.Pass(Call::NewDatabaseObject);
  return std::make_unique<FaultyConnection>(plan_, inner_.NewConnection());
}

std::unique_ptr<platform::Recordset> FaultyDatabase::NewRecordset() {
  plan_.Pass(Call::NewDatabaseObject);
  return std::make_unique<FaultyRecordset>(plan_, inner_.NewRecordset());
}

std::unique_ptr<platform::ResultDocument> FaultyDocuments::New() {
  plan_.Pass(Call::NewDocument);
  return std::make_unique<FaultyDocument>(plan_, inner_.New());
}

}  // namespace faults
