// Handing an answer to the host: Write, RemoveRequest, Notify, in this order. Once notified, the
// host may write its next request under the same name.
#pragma once

#include <string>

#include "platform/files.h"
#include "simulator/core/answer.h"
#include "simulator/core/command_line.h"
#include "simulator/core/request.h"

namespace simulator {

// The host's notification window.
class HostWindows {
 public:
  virtual ~HostWindows() = default;
  // Posts to the first window of the class: any window of the class will do, and a second message
  // would make the host look for the result again. False if there is none.
  virtual bool Post(const Notification& notification) = 0;
};

class Delivery {
 public:
  // All arguments must outlive this object.
  Delivery(const CommandLine& commandLine, const Request& request, platform::Files& files,
           HostWindows& hosts)
      : commandLine_(commandLine), request_(request), files_(files), hosts_(hosts) {}

  // Writes the result file, completely or not at all. Raises Problem if that fails or the outcome
  // does not fit this request; the request file then stays, and any outcome may follow.
  void Write(const Answer& answer);
  // Removes the request file if the command line asks for it. Raises Problem if it cannot be
  // removed; the host should be notified all the same.
  void RemoveRequest();
  // Notifies the host; false if the host's window does not exist. True if there is nothing to
  // report.
  bool Notify();
  // The message for when Notify() has finally failed.
  std::u16string NobodyThereText() const;

 private:
  const CommandLine& commandLine_;
  const Request& request_;
  platform::Files& files_;
  HostWindows& hosts_;
  bool written_ = false;
};

}  // namespace simulator
