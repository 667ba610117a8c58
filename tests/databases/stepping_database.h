// A database that passes every call on to a real one, counts the calls, and lets one of them fail.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "automation/automation_error.h"
#include "platform/database.h"

namespace databases {

inline const automation::AutomationError kBrokenStep{1001, u"Test", u"Broken step"};

enum class Break {
  // The call does not reach the database.
  Instead,
  // The database carries the call out, and its answer is lost.
  Afterwards
};

// What all connections and recordsets of a SteppingDatabase share.
struct Steps {
  int count = 0;
  int breaksAt = 0;
  Break how = Break::Instead;
  bool rollbackFails = false;
  std::u16string brokenCall = {};
  // Called in front of each step with its number.
  std::function<void(int)> before = {};
};

class SteppingDatabase : public platform::Database {
 public:
  explicit SteppingDatabase(platform::Database& inner) : inner_(inner) {}
  std::unique_ptr<platform::Connection> NewConnection() override;
  std::unique_ptr<platform::Recordset> NewRecordset() override;

  // The step-th call from now (1 is the next) breaks. Rollbacks are no steps; when they fail, they
  // do not reach the database.
  void BreakStep(int step, Break how, bool rollbackFails = false) {
    *steps_ = {.breaksAt = step, .how = how, .rollbackFails = rollbackFails};
  }
  // From now on `before` is called in front of each step.
  void Watch(std::function<void(int)> before) { *steps_ = {.before = std::move(before)}; }
  void BreakNothing() { *steps_ = {}; }
  // The call that broke, nothing when the step has not come.
  const std::u16string& BrokenCall() const { return steps_->brokenCall; }

 private:
  platform::Database& inner_;
  std::shared_ptr<Steps> steps_ = std::make_shared<Steps>();
};

}  // namespace databases
