#pragma once

#include "platform/processes.h"

namespace windows {

// Programs started from a command line. The program's path in it is not quoted, so the system tries
// to end the path at each blank in turn.
class ShellProcesses : public platform::Processes {
 public:
  void Start(const std::u16string& commandLine) override;
};

}  // namespace windows
