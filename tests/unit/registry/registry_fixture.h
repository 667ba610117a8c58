// The registry class on the registry in memory.
#pragma once

#include <string>

#include "automation/automation_error.h"
#include "fakes/ports_fixture.h"
#include "registry/c_registry.h"

namespace registry {

inline const std::u16string kPath = u"SOFTWARE\\Kestra\\Kestra.Main.exe";

class RegistryTest : public fakes::PortsFixture {
 protected:
  ~RegistryTest() override { EXPECT_EQ(registry.OpenHandles(), 0U) << "a key was left open"; }

  // The class on the key of that path, loaded.
  static CRegistry Loaded(const std::u16string& path = kPath) {
    CRegistry key;
    key.SetKey(path);
    return key;
  }
  void SetText(const std::u16string& name, const std::u16string& text) {
    registry.SetText(kLocalMachine, kPath, name, text);
  }
  std::u16string Text(const std::u16string& name) {
    return registry.Text(kLocalMachine, kPath, name);
  }
  bool Exists(const std::u16string& path) { return registry.KeyExists(kLocalMachine, path); }
};

// The error that `action` raises; one with number 0 when it raises none.
template <class Action>
automation::AutomationError ErrorOf(Action&& action) {
  try {
    action();
  } catch (const automation::AutomationError& error) {
    return error;
  }
  return {0, u"", u""};
}

inline void ExpectError(const automation::AutomationError& error, std::int32_t number,
                        const std::u16string& source, const std::u16string& description) {
  EXPECT_EQ(error.number(), number);
  EXPECT_EQ(error.source(), source);
  EXPECT_EQ(error.description(), description);
}

}  // namespace registry
