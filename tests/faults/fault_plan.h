// Where a fault occurs: every port call is counted, and one of them fails.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "automation/automation_error.h"

namespace faults {

// The port calls that can fail, grouped by their possible errors.
enum class Call {
  StartProcess,
  CreateFolder,
  FileLength,
  DeleteFile,
  RenameFile,
  ReplaceContents,
  GetSetting,
  SaveSetting,
  Registry,
  NewDatabaseObject,
  OpenConnection,
  Statement,
  BeginOrCommit,
  Rollback,
  Cursor,
  Field,
  Rows,
  NewDocument,
  LoadDocument,
  ReadDocument,
};

// The possible errors of a call of this kind. A registry call returns its error number as a code.
const std::vector<automation::AutomationError>& ErrorsOf(Call call);

class FaultPlan {
 public:
  // Every port calls this before its work. Raises the planned error when its turn has come.
  void Pass(Call call);
  // The same for a call that returns codes: the code, or 0 when the call is to do its work.
  std::int32_t PassWithCode(Call call);

  // Makes the `position`-th call from now (from 0) fail.
  void FailAt(std::size_t position, automation::AutomationError error);
  // Makes every rollback fail, in addition to that call.
  void FailRollbacks(automation::AutomationError error);
  // No further call fails; counting starts again.
  void Clear();

  // The calls since the last Clear.
  const std::vector<Call>& calls() const { return calls_; }

 private:
  bool IsDue() const { return failAt_ && calls_.size() == *failAt_ + 1; }

  std::vector<Call> calls_;
  std::optional<std::size_t> failAt_;
  std::optional<automation::AutomationError> error_;
  std::optional<automation::AutomationError> rollbackError_;
};

}  // namespace faults
