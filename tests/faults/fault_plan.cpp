#include "faults/fault_plan.h"

#include <initializer_list>
#include <map>

namespace faults {
namespace {

using automation::AutomationError;
using automation::RuntimeError;

std::vector<AutomationError> Runtime(std::initializer_list<RuntimeError> errors) {
  return {errors.begin(), errors.end()};
}

// System codes that a port call returns.
std::vector<AutomationError> Codes(std::initializer_list<std::int32_t> codes) {
  std::vector<AutomationError> errors;
  for (const auto code : codes) {
    errors.emplace_back(code, u"", automation::RuntimeErrorText(code));
  }
  return errors;
}

const AutomationError kServerGone(-2147467259, u"Provider", u"server closed the connection");
const AutomationError kRefused(-2147217900, u"Provider", u"syntax error near \"x\"");
const AutomationError kLocked(-2147467259, u"Provider", u"database is locked (5)");
const AutomationError kOutOfMemory(RuntimeError::OutOfMemory);

}  // namespace

const std::vector<AutomationError>& ErrorsOf(Call call) {
  using enum RuntimeError;
  static const std::map<Call, std::vector<AutomationError>> errors = {
      {Call::StartProcess, Runtime({InvalidProcedureCall, FileNotFound, PermissionDenied})},
      {Call::CreateFolder,
       Runtime({FileAlreadyExists, DiskFull, PermissionDenied, PathFileAccess, PathNotFound})},
      {Call::FileLength, Runtime({BadFileName, FileNotFound, PermissionDenied, PathNotFound})},
      {Call::DeleteFile, Runtime({FileNotFound, PermissionDenied, PathFileAccess})},
      // A missing file and a name already in use are answers, not faults.
      {Call::RenameFile, Runtime({PermissionDenied, PathFileAccess})},
      {Call::ReplaceContents, Runtime({BadFileName, DeviceIoError, DiskFull, PermissionDenied,
                                       PathFileAccess, PathNotFound, OutOfMemory})},
      {Call::GetSetting, Runtime({InvalidProcedureCall, OutOfMemory})},
      {Call::SaveSetting, Runtime({InvalidProcedureCall, OutOfMemory})},
      {Call::Registry, Codes({2, 5, 6, 234, 1010, 1018})},
      {Call::NewDatabaseObject, Runtime({OutOfMemory, CannotCreateObject})},
      {Call::OpenConnection, {kServerGone, kLocked}},
      {Call::Statement, {kServerGone, kRefused, kLocked, kOutOfMemory}},
      {Call::BeginOrCommit, {kServerGone, kLocked}},
      {Call::Rollback, {kServerGone}},
      {Call::Cursor, {kServerGone, kOutOfMemory}},
      {Call::Field, {kServerGone, AutomationError(3265, u"ADODB", u"Item cannot be found")}},
      {Call::Rows, {kServerGone, kOutOfMemory}},
      {Call::NewDocument, Runtime({OutOfMemory, CannotCreateObject})},
      {Call::LoadDocument, Runtime({OutOfMemory, AutomationFailure})},
      {Call::ReadDocument, Runtime({OutOfMemory, AutomationFailure})},
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
