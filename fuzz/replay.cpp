// Runs a fuzzer's function on saved files, without libFuzzer: its corpus, and the inputs that once
// found a defect.
//   FUZZER FOLDER    prints "ok FILE" for each file; one that fails ends the program
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <set>
#include <vector>

#include "fuzz/world.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: " << argv[0] << " FOLDER\n";
    return 2;
  }
  const std::filesystem::directory_iterator folder(argv[1]);
  for (const auto& path : std::set<std::filesystem::path>(begin(folder), end(folder))) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    // NOLINTNEXTLINE: bytes are characters here
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    std::cout << "ok " << path.filename().string() << std::endl;
  }
}
