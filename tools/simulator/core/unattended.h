// One run controlled by a plan, without a window.
#pragma once

#include <chrono>
#include <string>

#include "automation/value.h"
#include "platform/files.h"
#include "platform/result_document.h"
#include "simulator/core/command_line.h"
#include "simulator/core/delivery.h"
#include "simulator/core/plan.h"

namespace simulator {

// The process's exit code, also when the window is used.
enum class ExitCode : int {
  Done = 0,
  // The command line or the plan is invalid.
  BadCall = 2,
  UnreadableRequest = 3,
  // The result file, or a copy that the plan asks for, cannot be written; or the request file
  // cannot be removed.
  FileFailure = 4,
  // The host's window does not exist.
  NoHost = 5,
};

// The services that a run needs besides files and documents.
class Surroundings : public HostWindows {
 public:
  virtual void Pause(std::chrono::milliseconds time) = 0;
  // Copies a file's bytes; AutomationError on failure.
  virtual void Copy(const std::u16string& from, const std::u16string& to) = 0;
  // One line for the log.
  virtual void Log(const std::u16string& line) = 0;
};

struct Unattended {
  platform::Files& files;
  platform::ResultDocuments& documents;
  Surroundings& surroundings;
  automation::Date now;

  // Reads the request, answers it by the plan and logs what it did. `commandLineText` is saved with
  // the copies of the request.
  ExitCode Run(const CommandLine& commandLine, const std::u16string& commandLineText,
               const Plan& plan);

 private:
  ExitCode Serve(const CommandLine& commandLine, const std::u16string& commandLineText,
                 const Plan& plan);
  ExitCode Deliver(const CommandLine& commandLine, const Request& request, const Plan& plan);
  void Keep(const CommandLine& commandLine, const std::u16string& commandLineText,
            const Plan& plan);
  bool RemoveRequest(Delivery& delivery);
  bool NotifyWithin(std::chrono::milliseconds bound, Delivery& delivery);
};

}  // namespace simulator
