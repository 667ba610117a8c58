// One key of the registry in memory, with its values and subkeys.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/registry_api.h"

namespace fakes {

// Names ignore case and keep the case they were created with. Values are in order of creation,
// subkeys sorted by name.
class RegistryNode {
 public:
  using ValueEntry = platform::RegistryApi::ValueEntry;
  using Limits = platform::RegistryApi::Limits;

  explicit RegistryNode(std::u16string name = {}, RegistryNode* parent = nullptr);

  const std::u16string& name() const { return name_; }
  // nullptr for a root.
  RegistryNode* parent() const { return parent_; }
  const std::vector<ValueEntry>& values() const { return values_; }
  const std::vector<std::shared_ptr<RegistryNode>>& children() const { return children_; }
  bool writeDenied() const { return writeDenied_; }
  Limits MeasureLimits() const;

  // nullptr when missing.
  std::shared_ptr<RegistryNode> Child(const std::u16string& name) const;
  // The subkey of that name, created when missing; it inherits whether writing is denied.
  std::shared_ptr<RegistryNode> MakeChild(const std::u16string& name);
  void RemoveChild(const RegistryNode& child);
  // For this key and everything below it.
  void DenyWrite();

  const ValueEntry* Value(const std::u16string& name) const;
  void SetValue(ValueEntry entry);
  bool DeleteValue(const std::u16string& name);

 private:
  std::u16string name_;
  std::u16string upperName_;
  RegistryNode* parent_;
  std::vector<ValueEntry> values_;
  // The index in values_ of each name in capitals.
  std::map<std::u16string, std::size_t> positions_;
  // Sorted by the names in capitals.
  std::vector<std::shared_ptr<RegistryNode>> children_;
  bool writeDenied_ = false;
};

}  // namespace fakes
