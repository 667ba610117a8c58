// A test's own folder, removed with its contents.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "contract/adapters.h"

namespace contract {

class TemporaryFolder {
 public:
  TemporaryFolder() { std::filesystem::create_directories(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  const std::filesystem::path& path() const { return path_; }
  // The name's full path as the component spells it.
  std::u16string operator/(const std::string& name) const {
    return PathText((path_ / name).string());
  }
  void Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path_ / name, std::ios::binary) << bytes;
  }
  std::string Read(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path path_ = std::filesystem::temp_directory_path() /
                                ("vilnor-contract-" + std::to_string(std::random_device()()));
};

}  // namespace contract
