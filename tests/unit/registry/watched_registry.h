// The registry in memory with its calls recorded, and with behaviour that it lacks by itself.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "registry_fixture.h"

namespace registry {

class WatchedRegistry : public fakes::MemoryRegistry {
 public:
  std::int32_t QueryLimits(Key key, Limits& limits) override {
    ++calls;
    const auto code = MemoryRegistry::QueryLimits(key, limits);
    if (!grown.empty()) {
      SetText(kLocalMachine, kPath, u"Path", grown);
      grown.clear();
    }
    return code;
  }
  std::int32_t EnumValue(Key key, std::uint32_t index, const Limits& limits,
                         ValueEntry& entry) override {
    ++calls;
    return MemoryRegistry::EnumValue(key, index, limits, entry);
  }
  std::int32_t EnumKey(Key key, std::uint32_t index, const Limits& limits,
                       std::u16string& name) override {
    ++calls;
    return MemoryRegistry::EnumKey(key, index, limits, name);
  }
  std::int32_t CreateKey(Key parent, const std::u16string& path, std::uint32_t access, Key& opened,
                         std::uint32_t& disposition) override {
    accesses.push_back(access);
    const auto code = MemoryRegistry::CreateKey(parent, path, access, opened, disposition);
    disposition = givenDisposition.value_or(disposition);
    if (failure) {
      CloseKey(opened);
      failure();
    }
    return code;
  }
  std::int32_t OpenKey(Key parent, const std::u16string& path, std::uint32_t access,
                       Key& opened) override {
    accesses.push_back(access);
    return MemoryRegistry::OpenKey(parent, path, access, opened);
  }

  // Calls that read a key.
  std::size_t calls = 0;
  // The rights with which keys were opened and created.
  std::vector<std::uint32_t> accesses;
  // What the value "Path" becomes, once, between measuring and reading.
  std::u16string grown;
  // What a creation reports instead of its result.
  std::optional<std::uint32_t> givenDisposition;
  // Makes a creation raise an error.
  std::function<void()> failure;
};

class WatchedRegistryTest : public RegistryTest {
 protected:
  WatchedRegistryTest() { platform::Use(watchedPorts); }
  ~WatchedRegistryTest() override { EXPECT_EQ(watched.OpenHandles(), 0U); }

  WatchedRegistry watched;
  platform::Platform watchedPorts = fakes::With(ports, watched);
};

}  // namespace registry
