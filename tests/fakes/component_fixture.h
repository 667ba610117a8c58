// The component with all its ports faked except the parser and the files, which are in the test's
// own folder.
#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>

#include "automation/text.h"
#include "fakes/ports_fixture.h"
#include "util/session_settings.h"

namespace fakes {

class ComponentFixture : public PortsFixture {
 protected:
  ComponentFixture() {
    std::filesystem::create_directories(folder);
    util::CurrentSettings() = {.gConnectionParameter = u"Driver=Fake",
                               .gKestraLangID = 1,
                               .gDbType = 1,
                               .gDateFormat = u"yyyy-MM-dd"};
  }
  ~ComponentFixture() override { std::filesystem::remove_all(folder); }

  // The path of a file in the exchange directory, as the component spells it.
  std::u16string ExchangePath(const std::u16string& name) const {
    return exchangeDirectory + u"\\" + name;
  }
  bool Exists(const std::u16string& name) const {
    return std::filesystem::exists(folder / "Vilnor" / automation::ToUtf8(name));
  }
  std::string Contents(const std::u16string& name) const {
    std::ifstream file(folder / "Vilnor" / automation::ToUtf8(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  void Put(const std::u16string& name, const std::string& bytes) const {
    std::filesystem::create_directories(folder / "Vilnor");
    std::ofstream(folder / "Vilnor" / automation::ToUtf8(name), std::ios::binary) << bytes;
  }

  std::filesystem::path folder =
      std::filesystem::temp_directory_path() / ("vilnor-" + std::to_string(std::random_device()()));
  // What the host registers, with the trailing backslash that the component relies on.
  std::u16string hostPath = automation::FromUtf8(folder.string()) + u"\\";
  std::u16string exchangeDirectory = hostPath + u"Vilnor";
};

}  // namespace fakes
