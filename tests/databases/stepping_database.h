// Passes every call on to a real database, counts the calls, and makes one of them fail.
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
  // The database executes the call, but its answer is lost.
  Afterwards
};

// Steps are the calls that reach the database: connecting, statements, closing, and the beginning
// and commit of a transaction, but not its rollback.
class SteppingDatabase : public fakes::InterceptedDatabase {
 public:
  using InterceptedDatabase::InterceptedDatabase;

  // Makes the step-th call from now (1 is the next) fail. Failing rollbacks do not reach the
  // database.
  void BreakStep(int step, Break how, bool rollbackFails = false);
  // Calls `before` before each step, with the step's number.
  void Watch(std::function<void(int)> before);
  void BreakNothing();
  // The call that failed, empty before the step is reached.
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
