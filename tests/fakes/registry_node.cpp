#include "fakes/registry_node.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "automation/text.h"

namespace fakes {
namespace {

// Data of a value that is not text: a 32-bit number.
constexpr std::uint32_t kOtherDataSize = 4;

std::uint32_t Size(const std::u16string& text) {
  return static_cast<std::uint32_t>(text.size());
}

}  // namespace

RegistryNode::RegistryNode(std::u16string name, RegistryNode* parent)
    : name_(std::move(name)), upperName_(automation::UCase(name_)), parent_(parent) {}

RegistryNode::Limits RegistryNode::MeasureLimits() const {
  Limits limits;
  for (const ValueEntry& value : values_) {
    const bool text = value.type == platform::RegistryApi::kTypeText;
    limits.valueName = std::max(limits.valueName, Size(value.name));
    limits.valueData = std::max(limits.valueData, text ? Size(value.text) : kOtherDataSize);
  }
  for (const auto& child : children_) {
    limits.subkeyName = std::max(limits.subkeyName, Size(child->name_));
  }
  return limits;
}

std::shared_ptr<RegistryNode> RegistryNode::Child(const std::u16string& name) const {
  const std::u16string upper = automation::UCase(name);
  const auto place = std::lower_bound(
      children_.begin(), children_.end(), upper,
      [](const auto& child, const auto& wanted) { return child->upperName_ < wanted; });
  return place != children_.end() && (*place)->upperName_ == upper ? *place : nullptr;
}

std::shared_ptr<RegistryNode> RegistryNode::MakeChild(const std::u16string& name) {
  if (auto existing = Child(name)) {
    return existing;
  }
  auto made = std::make_shared<RegistryNode>(name, this);
  made->writeDenied_ = writeDenied_;
  const auto place = std::upper_bound(
      children_.begin(), children_.end(), made,
      [](const auto& left, const auto& right) { return left->upperName_ < right->upperName_; });
  children_.insert(place, made);
  return made;
}

void RegistryNode::RemoveChild(const RegistryNode& child) {
  std::erase_if(children_, [&](const auto& other) { return other.get() == &child; });
}

void RegistryNode::DenyWrite() {
  writeDenied_ = true;
  std::for_each(children_.begin(), children_.end(), [](const auto& child) { child->DenyWrite(); });
}

const RegistryNode::ValueEntry* RegistryNode::Value(const std::u16string& name) const {
  const auto found = positions_.find(automation::UCase(name));
  return found == positions_.end() ? nullptr : &values_[found->second];
}

void RegistryNode::SetValue(ValueEntry entry) {
  const auto [place, added] = positions_.try_emplace(automation::UCase(entry.name), values_.size());
  if (added) {
    values_.push_back(std::move(entry));
    return;
  }
  ValueEntry& existing = values_[place->second];
  existing.type = entry.type;
  existing.text = std::move(entry.text);
}

bool RegistryNode::DeleteValue(const std::u16string& name) {
  const auto found = positions_.find(automation::UCase(name));
  if (found == positions_.end()) {
    return false;
  }
  const std::size_t position = found->second;
  values_.erase(std::next(values_.begin(), static_cast<std::ptrdiff_t>(position)));
  positions_.erase(found);
  for (auto& [upperName, other] : positions_) {
    other -= other > position ? 1U : 0U;
  }
  return true;
}

}  // namespace fakes
