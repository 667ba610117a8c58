// Plays the trips with KestraHost.exe and the simulator of the link program.
#pragma once

#include <filesystem>

#include "field-tests/core/rules.h"
#include "field-tests/test_database.h"
#include "field-tests/test_programs.h"

namespace field_tests {

// How the component finds its link program and its exchange folder on this computer.
class Installation {
 public:
  // Names the programs in the registry; they are not copied anywhere else. With `asUser` nothing is
  // written that needs administrator rights: the link program is named in the user's settings.
  Installation(const Folders& folders, bool asUser);

  // "" if the trips can be made, otherwise why not.
  const std::string& problem() const { return problem_; }
  std::filesystem::path Exchange() const { return host_ / "Vilnor"; }
  std::filesystem::path Link() const { return link_; }

 private:
  std::filesystem::path host_;
  std::filesystem::path link_;
  std::string problem_;
};

// All trips.
Cases PlayTrips(const Folders& folders, const Circumstances& circumstances,
                const Installation& installation, TestDatabase* database);

}  // namespace field_tests
