// The simulator's surroundings on Windows: the host's windows, the clock, the log.
#pragma once

#include "simulator/core/unattended.h"

namespace simulator {

class Desktop : public Surroundings {
 public:
  // The log's lines are appended to `logFile` (UTF-8; empty for none), and always go to standard
  // error.
  explicit Desktop(std::u16string logFile) : logFile_(std::move(logFile)) {}

  bool Post(const Notification& notification) override;
  void Pause(std::chrono::milliseconds time) override;
  void Copy(const std::u16string& from, const std::u16string& to) override;
  void Log(const std::u16string& line) override;

 private:
  std::u16string logFile_;
};

}  // namespace simulator
