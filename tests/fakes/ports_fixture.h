// Tests over a platform of doubles, for the rooms that know nothing of the host's database.
#pragma once

#include <gtest/gtest.h>

#include "fakes/ports.h"
#include "fakes/printing.h"

namespace fakes {

class PortsFixture : public testing::Test, protected Ports {
 protected:
  PortsFixture() { platform::Use(ports); }
};

}  // namespace fakes
