// Handing an answer to the host: Write, RemoveRequest, Notify, in this order. Once the host is
// told, it may write its next request under the same name.
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
  // Posts to the first window of the class: the host's windows of one class serve alike, and a
  // second message would make it look for the result again. False while there is none.
  virtual bool Post(const Notification& notification) = 0;
};

class Delivery {
 public:
  // All are kept alive by the caller.
  Delivery(const CommandLine& commandLine, const Request& request, platform::Files& files,
           HostWindows& hosts)
      : commandLine_(commandLine), request_(request), files_(files), hosts_(hosts) {}

  // Puts the result file in its place, whole or not at all. Raises Problem when that fails or when
  // the outcome is not one for this request; the request file stays then, and any outcome may
  // follow.
  void Write(const Answer& answer);
  // Removes the request file when the command line asks for it. Raises Problem when it cannot be
  // removed, which is no reason not to tell the host.
  void RemoveRequest();
  // Tells the host; false while the host's window is not there. True also when there is nothing to
  // tell.
  bool Notify();
  // Why Notify() failed to the end.
  std::u16string NobodyThereText() const;

 private:
  const CommandLine& commandLine_;
  const Request& request_;
  platform::Files& files_;
  HostWindows& hosts_;
  bool written_ = false;
};

}  // namespace simulator
