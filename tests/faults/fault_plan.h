// Where a fault strikes: every call that passes a port is counted, and one of them fails.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "automation/automation_error.h"

namespace faults {

// The port calls that can fail, by the errors that they can give.
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
  NewDocument,
  LoadDocument,
  ReadDocument,
};

// The errors that a call of this kind can give. A registry call gives its error's number as a
// code.
const std::vector<automation::AutomationError>& ErrorsOf(Call call);

class FaultPlan {
 public:
  // To be called by each port before it does its work: raises the planned error when its turn has
  // come.
  void Pass(Call call);
  // The same for a call that gives codes: the code, 0 when the call shall do its work.
  std::int32_t PassWithCode(Call call);

  // The `position`-th call from now (from 0) fails.
  void FailAt(std::size_t position, automation::AutomationError error);
  // As well as that one, every rollback fails.
  void FailRollbacks(automation::AutomationError error);
  // No further call fails; counting begins anew.
  void Clear();

  // What has passed since the last Clear.
  const std::vector<Call>& calls() const { return calls_; }

 private:
  bool IsDue() const { return failAt_ && calls_.size() == *failAt_ + 1; }

  std::vector<Call> calls_;
  std::optional<std::size_t> failAt_;
  std::optional<automation::AutomationError> error_;
  std::optional<automation::AutomationError> rollbackError_;
};

}  // namespace faults
