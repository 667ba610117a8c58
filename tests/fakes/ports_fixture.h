// Tests over a platform of doubles, for the rooms that know nothing of the host's database.
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
    // What a derived fixture had in use is gone.
    platform::Use(ports);
    platform::ForgetThreadState();
  }

  // As on a thread that has never called the component.
  void BeginAnew() {
    platform::ForgetThreadState();
    platform::Use(ports);
  }
};

}  // namespace fakes
