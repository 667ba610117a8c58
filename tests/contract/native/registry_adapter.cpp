#include "contract/registry_adapter.h"

#include "fakes/ports.h"

namespace contract {
namespace {

constexpr std::uint32_t kNumberType = 4;

fakes::Ports& Outside() {
  static fakes::Ports ports;
  return ports;
}

}  // namespace

platform::Platform& RegistryPlatform() {
  return Outside().ports;
}

void SetNumber(const std::u16string& path, const std::u16string& name) {
  Outside().registry.SetOther(fakes::MemoryRegistry::kCurrentUser, path, name, kNumberType);
}

}  // namespace contract
