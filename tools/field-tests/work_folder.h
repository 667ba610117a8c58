// The folder in which the tests work, and the state to which the registry returns.
#pragma once

#include <filesystem>
#include <set>

#include "field-tests/cannot_work.h"
#include "field-tests/handle.h"
#include "field-tests/registry_state.h"

namespace field_tests {

// The folder has the same name each time, so that what a killed run left is found by the next,
// which puts it back first. Children use it for their temporary files.
class WorkFolder {
 public:
  // Raises CannotWork, when another field run is under way, too.
  WorkFolder();

  const std::filesystem::path& path() const { return path_; }
  bool PutBackRegistry() const;
  // False if something is left.
  bool Remove() const;

 private:
  Handle onlyOne_;
  RegistryState before_;
  std::filesystem::path path_;
  // Without an exchange folder, the component writes requests to the root of the drive.
  std::set<std::filesystem::path> rootBefore_;
};

}  // namespace field_tests
