#include "faults/fault_plan.h"

#include <initializer_list>
#include <map>

namespace faults {
namespace {

using automation::AutomationError;
using automation::RuntimeErrorText;

std::vector<AutomationError> Runtime(std::initializer_list<std::int32_t> numbers) {
  std::vector<AutomationError> errors;
  for (const auto number : numbers) {
    errors.emplace_back(number, u"", RuntimeErrorText(number));
  }
  return errors;
}

const AutomationError kServerGone(-2147467259, u"Provider", u"server closed the connection");
const AutomationError kRefused(-2147217900, u"Provider", u"syntax error near \"x\"");
const AutomationError kLocked(-2147467259, u"Provider", u"database is locked (5)");
const AutomationError kOutOfMemory(7, u"", u"Out of memory");

}  // namespace

const std::vector<AutomationError>& ErrorsOf(Call call) {
  static const std::map<Call, std::vector<AutomationError>> errors = {
      {Call::StartProcess, Runtime({5, 53, 70})},
      {Call::CreateFolder, Runtime({58, 61, 70, 75, 76})},
      {Call::FileLength, Runtime({52, 53, 70, 76})},
      {Call::DeleteFile, Runtime({53, 70, 75})},
      {Call::ReplaceContents, Runtime({52, 57, 61, 70, 75, 76, 7})},
      {Call::GetSetting, Runtime({5, 7})},
      {Call::SaveSetting, Runtime({5, 7})},
      {Call::Registry, Runtime({2, 5, 6, 234, 1010, 1018})},
      {Call::NewDatabaseObject, Runtime({7, 429})},
      {Call::OpenConnection, {kServerGone, kLocked}},
      {Call::Statement, {kServerGone, kRefused, kLocked, kOutOfMemory}},
      {Call::BeginOrCommit, {kServerGone, kLocked}},
      {Call::Rollback, {kServerGone}},
      {Call::Cursor, {kServerGone, kOutOfMemory}},
      {Call::Field, {kServerGone, AutomationError(3265, u"ADODB", u"Item cannot be found")}},
      {Call::NewDocument, Runtime({7, 429})},
      {Call::LoadDocument, Runtime({7, 440})},
      {Call::ReadDocument, Runtime({7, 440})},
  };
  return errors.at(call);
}

void FaultPlan::Pass(Call call) {
  calls_.push_back(call);
  if (IsDue()) {
    throw AutomationError(*error_);
  }
  if (call == Call::Rollback && rollbackError_) {
    throw AutomationError(*rollbackError_);
  }
}

std::int32_t FaultPlan::PassWithCode(Call call) {
  calls_.push_back(call);
  return IsDue() ? error_->number() : 0;
}

void FaultPlan::FailAt(std::size_t position, AutomationError error) {
  failAt_ = position;
  error_ = std::move(error);
}

void FaultPlan::FailRollbacks(AutomationError error) {
  rollbackError_ = std::move(error);
}

void FaultPlan::Clear() {
  calls_.clear();
  failAt_.reset();
  rollbackError_.reset();
}

}  // namespace faults
