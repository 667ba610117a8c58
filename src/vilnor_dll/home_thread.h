#pragma once

namespace vilnor_dll {

// The thread that made an object, the only one that may call it: the settings and the connection
// that it works with are that thread's.
class HomeThread {
 public:
  HomeThread();
  bool IsCurrent() const;

 private:
  const void* thread_;
};

}  // namespace vilnor_dll
