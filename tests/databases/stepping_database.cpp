#include "databases/stepping_database.h"

#include <utility>

namespace databases {
namespace {

template <class Work>
auto Step(Steps& steps, const std::u16string& call, Work work) {
  const int step = ++steps.count;
  if (steps.before) {
    steps.before(step);
  }
  if (step == steps.breaksAt) {
    steps.brokenCall = call;
    if (steps.how == Break::Afterwards) {
      work();
    }
    throw automation::AutomationError(kBrokenStep);
  }
  return work();
}

class SteppingConnection : public platform::Connection {
 public:
  SteppingConnection(std::shared_ptr<Steps> steps, std::unique_ptr<platform::Connection> inner)
      : steps_(std::move(steps)), inner_(std::move(inner)) {}
  void SetConnectionString(const std::u16string& connectionString) override {
    inner_->SetConnectionString(connectionString);
  }
  void Open(const std::u16string& connectionString, const std::u16string& user,
            const std::u16string& password, std::int32_t options) override {
    Step(*steps_, u"Connection.Open",
         [&] { inner_->Open(connectionString, user, password, options); });
  }
  std::unique_ptr<platform::Recordset> Execute(const std::u16string& statement,
                                               std::int32_t options) override {
    return Step(*steps_, statement, [&] { return inner_->Execute(statement, options); });
  }
  void BeginTrans() override {
    Step(*steps_, u"BeginTrans", [&] { inner_->BeginTrans(); });
  }
  void CommitTrans() override {
    Step(*steps_, u"CommitTrans", [&] { inner_->CommitTrans(); });
  }
  void RollbackTrans() override {
    if (steps_->rollbackFails) {
      throw automation::AutomationError(kBrokenStep);
    }
    inner_->RollbackTrans();
  }
  platform::Connection& inner() { return *inner_; }

 private:
  std::shared_ptr<Steps> steps_;
  std::unique_ptr<platform::Connection> inner_;
};

class SteppingRecordset : public platform::Recordset {
 public:
  SteppingRecordset(std::shared_ptr<Steps> steps, std::unique_ptr<platform::Recordset> inner)
      : steps_(std::move(steps)), inner_(std::move(inner)) {}
  void SetCursorLocation(platform::CursorLocation location) override {
    inner_->SetCursorLocation(location);
  }
  void Open(const std::u16string& statement, platform::Connection& connection,
            platform::CursorType cursorType, platform::LockType lockType,
            std::int32_t options) override {
    Step(*steps_, statement, [&] {
      inner_->Open(statement, dynamic_cast<SteppingConnection&>(connection).inner(), cursorType,
                   lockType, options);
    });
  }
  bool Eof() override { return inner_->Eof(); }
  void MoveNext() override { inner_->MoveNext(); }
  automation::Value Field(const std::u16string& name) override { return inner_->Field(name); }
  automation::Value Field(std::int32_t index) override { return inner_->Field(index); }
  void SetField(const std::u16string& name, const automation::Value& value) override {
    inner_->SetField(name, value);
  }
  std::unique_ptr<platform::Recordset> Clone(platform::LockType lockType) override {
    return inner_->Clone(lockType);
  }
  void Close() override {
    Step(*steps_, u"Recordset.Close", [&] { inner_->Close(); });
  }

 private:
  std::shared_ptr<Steps> steps_;
  std::unique_ptr<platform::Recordset> inner_;
};

}  // namespace

std::unique_ptr<platform::Connection> SteppingDatabase::NewConnection() {
  return std::make_unique<SteppingConnection>(steps_, inner_.NewConnection());
}

std::unique_ptr<platform::Recordset> SteppingDatabase::NewRecordset() {
  return std::make_unique<SteppingRecordset>(steps_, inner_.NewRecordset());
}

}  // namespace databases
