// Tests on a fake platform, for code that does not use the host's database.
#pragma once

#include <gtest/gtest.h>

#include "fakes/ports.h"
#include "fakes/printing.h"
#include "platform/thread_state.h"

namespace fakes {

class PortsFixture : public testing::Test, protected Ports {
 protected:
  PortsFixture() { BeginAnew(); }
  ~PortsFixture() override {
    // The members of a derived fixture are already destroyed.
    platform::Use(ports);
    platform::ForgetThreadState();
  }

  // Like a thread that has never called the component.
  void BeginAnew() {
    platform::ForgetThreadState();
    platform::Use(ports);
  }
};

}  // namespace fakes
