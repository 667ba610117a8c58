#include "databases/stepping_database.h"

#include <optional>

namespace databases {
namespace {

// The step's name, empty for a call that is not a step.
std::optional<std::u16string> StepOf(fakes::DatabaseCall call, const std::u16string& statement) {
  switch (call) {
    case fakes::DatabaseCall::OpenConnection:
      return u"Connection.Open";
    case fakes::DatabaseCall::Statement:
      return statement;
    case fakes::DatabaseCall::BeginTrans:
      return u"BeginTrans";
    case fakes::DatabaseCall::CommitTrans:
      return u"CommitTrans";
    case fakes::DatabaseCall::CloseRecordset:
      return u"Recordset.Close";
    default:
      return std::nullopt;
  }
}

}  // namespace

void SteppingDatabase::On(fakes::DatabaseCall call, const std::u16string& statement,
                          const std::function<void()>& work) {
  if (call == fakes::DatabaseCall::RollbackTrans && rollbackFails_) {
    throw automation::AutomationError(kBrokenStep);
  }
  const auto name = StepOf(call, statement);
  if (!name) {
    work();
    return;
  }
  const int step = ++count_;
  if (before_) {
    before_(step);
  }
  const bool breaks = step == breaksAt_;
  if (!breaks || how_ == Break::Afterwards) {
    work();
  }
  if (breaks) {
    brokenCall_ = *name;
    throw automation::AutomationError(kBrokenStep);
  }
}

void SteppingDatabase::BreakStep(int step, Break how, bool rollbackFails) {
  BreakNothing();
  breaksAt_ = step;
  how_ = how;
  rollbackFails_ = rollbackFails;
}

void SteppingDatabase::Watch(std::function<void(int)> before) {
  BreakNothing();
  before_ = std::move(before);
}

void SteppingDatabase::BreakNothing() {
  count_ = 0;
  breaksAt_ = 0;
  how_ = Break::Instead;
  rollbackFails_ = false;
  brokenCall_.clear();
  before_ = nullptr;
}

}  // namespace databases
