// The test's own key under HKEY_CURRENT_USER, removed at the end of the test.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "automation/text.h"
#include "contract/registry_adapter.h"
#include "fakes/printing.h"
#include "platform/registry_api.h"
#include "registry/c_registry.h"

namespace contract {

class RegistryContract : public testing::Test {
 protected:
  using Api = platform::RegistryApi;
  static constexpr std::uint32_t kCurrentUser = 0x80000001;
  static constexpr std::uint32_t kAllRights = 0x3F;

  RegistryContract() {
    platform::Use(RegistryPlatform());
    CleanUp();
  }
  ~RegistryContract() override { CleanUp(); }

  static Api& Registry() { return RegistryPlatform().registry; }
  static void CleanUp() { Loaded(u"Software").DeleteKey(u"Vilnor contract"); }
  static registry::CRegistry Loaded(const std::u16string& keyPath) {
    registry::CRegistry key;
    key.SetRoot(kCurrentUser);
    key.SetKey(keyPath);
    return key;
  }
  // The key, created when missing, open with all rights.
  static registry::KeyHandle Opened(const std::u16string& keyPath, Api::Key parent = kCurrentUser) {
    Api::Key key = 0;
    std::uint32_t disposition = 0;
    EXPECT_EQ(Registry().CreateKey(parent, keyPath, kAllRights, key, disposition), Api::kSuccess);
    return {Registry(), key};
  }
  void SetText(const std::u16string& valueName, const std::u16string& text) const {
    EXPECT_EQ(Registry().SetTextValue(Opened(path).key(), valueName, text), Api::kSuccess);
  }

  std::u16string path =
      u"Software\\Vilnor contract\\" +
      automation::FromUtf8(testing::UnitTest::GetInstance()->current_test_info()->name());
};

}  // namespace contract
