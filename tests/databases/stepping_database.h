// A database that passes every call on to a real one, counts the calls, and lets one of them fail.
#pragma once

#include <functional>
#include <string>

#include "automation/automation_error.h"
#include "fakes/intercepted_database.h"

namespace databases {

inline const automation::AutomationError kBrokenStep{1001, u"Test", u"Broken step"};

enum class Break {
  // The call does not reach the database.
  Instead,
  // The database carries the call out, and its answer is lost.
  Afterwards
};

// Steps are the calls that reach the database: connections, statements, closings, and of a
// transaction beginning and end, but no rollback.
class SteppingDatabase : public fakes::InterceptedDatabase {
 public:
  using InterceptedDatabase::InterceptedDatabase;

  // The step-th call from now (1 is the next) breaks. Rollbacks that fail do not reach the
  // database.
  void BreakStep(int step, Break how, bool rollbackFails = false);
  // From now on `before` is called in front of each step with its number.
  void Watch(std::function<void(int)> before);
  void BreakNothing();
  // The call that broke, nothing when the step has not come.
  const std::u16string& BrokenCall() const { return brokenCall_; }

 private:
  void On(fakes::DatabaseCall call, const std::u16string& statement,
          const std::function<void()>& work) override;

  int count_ = 0;
  int breaksAt_ = 0;
  Break how_ = Break::Instead;
  bool rollbackFails_ = false;
  std::u16string brokenCall_;
  std::function<void(int)> before_;
};

}  // namespace databases
