// Any bytes as a request file, read by the simulator: the result is a request or an error message.
#include "fuzz/world.h"
#include "simulator/core/problem.h"
#include "simulator/core/request.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::World world;
  fuzz::World::Put("In.xml", fuzz::Bytes(data, size));
  try {
    const auto request =
        simulator::ReadRequest(world.files, world.documents, fuzz::World::PathOf("In.xml"));
    fuzz::Require(!request.ExpectsAnswer() || !request.resultPath.empty());
  } catch (const simulator::Problem& problem) {
    fuzz::Require(!problem.text().empty());
  }
  return 0;
}
