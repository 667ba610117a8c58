// A request file of any content, read by the simulator: a request or a problem in words.
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
