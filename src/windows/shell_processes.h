#pragma once

#include "platform/processes.h"

namespace windows {

// Programs started from a command line. The program's path stands unquoted in it, so the system
// looks for the program at each blank in turn.
class ShellProcesses : public platform::Processes {
 public:
  void Start(const std::u16string& commandLine) override;
};

}  // namespace windows
