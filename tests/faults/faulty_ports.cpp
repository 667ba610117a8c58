#include "faults/faulty_ports.h"

namespace faults {
namespace {

Call KindOf(fakes::DatabaseCall call) {
  switch (call) {
    case fakes::DatabaseCall::NewObject:
      return Call::NewDatabaseObject;
    case fakes::DatabaseCall::SetConnectionString:
    case fakes::DatabaseCall::OpenConnection:
      return Call::OpenConnection;
    case fakes::DatabaseCall::Statement:
      return Call::Statement;
    case fakes::DatabaseCall::BeginTrans:
    case fakes::DatabaseCall::CommitTrans:
      return Call::BeginOrCommit;
    case fakes::DatabaseCall::RollbackTrans:
      return Call::Rollback;
    case fakes::DatabaseCall::Field:
      return Call::Field;
    case fakes::DatabaseCall::Rows:
      return Call::Rows;
    default:
      return Call::Cursor;
  }
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

void FaultyDatabase::On(fakes::DatabaseCall call, const std::u16string& /*statement*/,
                        const std::function<void()>& work) {
  plan_.Pass(KindOf(call));
  work();
}

std::unique_ptr<platform::ResultDocument> FaultyDocuments::New() {
  plan_.Pass(Call::NewDocument);
  return std::make_unique<FaultyDocument>(plan_, inner_.New());
}

}  // namespace faults
