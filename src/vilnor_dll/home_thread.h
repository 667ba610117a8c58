#pragma once

namespace vilnor_dll {

// The thread that created an object. Only it may call the object, which uses that thread's settings
// and connection.
class HomeThread {
 public:
  HomeThread();
  bool IsCurrent() const;

 private:
  const void* thread_;
};

}  // namespace vilnor_dll
