#include "fakes/memory_registry.h"

#include <algorithm>
#include <vector>

#include "automation/text.h"

namespace fakes {
namespace {

constexpr std::uint32_t kQueryValue = 0x01;
constexpr std::uint32_t kSetValue = 0x02;
constexpr std::uint32_t kCreateSubKey = 0x04;
constexpr std::uint32_t kEnumerateSubKeys = 0x08;
constexpr std::uint32_t kCreateLink = 0x20;
constexpr std::uint32_t kWriteRights = kSetValue | kCreateSubKey | kCreateLink;
constexpr std::uint32_t kAnyRight = 0xFFFFFFFF;

constexpr std::uint32_t kFirstRoot = 0x80000000;
constexpr std::uint32_t kLastRoot = 0x80000005;

constexpr std::uint32_t kCreated = 1;
constexpr std::uint32_t kOpenedExisting = 2;

std::u16string UntilNul(const std::u16string& text) {
  return text.substr(0, text.find(u'\0'));
}

// The names of a path; empty ones (a separator at the end) do not count.
std::vector<std::u16string> NamesOf(const std::u16string& path) {
  std::vector<std::u16string> names = automation::Split(UntilNul(path), u'\\');
  std::erase(names, std::u16string());
  return names;
}

bool TooLong(const std::u16string& path) {
  const auto names = NamesOf(path);
  return std::any_of(names.begin(), names.end(), [](const auto& name) {
    return name.size() > MemoryRegistry::kLongestKeyName;
  });
}

bool MayOpen(const RegistryNode& node, std::uint32_t access) {
  return !node.writeDenied() || (access & kWriteRights) == 0;
}

}  // namespace

MemoryRegistry::MemoryRegistry() {
  for (std::uint32_t root = kFirstRoot; root <= kLastRoot; ++root) {
    roots_[root] = std::make_shared<RegistryNode>();
  }
}

void MemoryRegistry::MakeKey(std::uint32_t root, const std::u16string& path) {
  Make(root, path);
}

void MemoryRegistry::SetText(std::uint32_t root, const std::u16string& path,
                             const std::u16string& name, const std::u16string& text) {
  Make(root, path)->SetValue({.name = name, .type = kTypeText, .text = text});
}

void MemoryRegistry::SetOther(std::uint32_t root, const std::u16string& path,
                              const std::u16string& name, std::uint32_t type) {
  Make(root, path)->SetValue({.name = name, .type = type, .text = {}});
}

void MemoryRegistry::DenyWrite(std::uint32_t root, const std::u16string& path) {
  Make(root, path)->DenyWrite();
}

void MemoryRegistry::Fail(Call call, std::int32_t code) {
  failures_[call] = code;
}

bool MemoryRegistry::KeyExists(std::uint32_t root, const std::u16string& path) const {
  return Find(root, path) != nullptr;
}

bool MemoryRegistry::ValueExists(std::uint32_t root, const std::u16string& path,
                                 const std::u16string& name) const {
  const Node node = Find(root, path);
  return node && node->Value(name) != nullptr;
}

std::u16string MemoryRegistry::Text(std::uint32_t root, const std::u16string& path,
                                    const std::u16string& name) const {
  return ValueExists(root, path, name) ? Find(root, path)->Value(name)->text : std::u16string();
}

MemoryRegistry::Node MemoryRegistry::Find(std::uint32_t root, const std::u16string& path) const {
  Node node = roots_.at(root);
  for (const auto& name : NamesOf(path)) {
    node = node ? node->Child(name) : nullptr;
  }
  return node;
}

MemoryRegistry::Node MemoryRegistry::Make(std::uint32_t root, const std::u16string& path) {
  Node node = roots_.at(root);
  for (const auto& name : NamesOf(path)) {
    node = node->MakeChild(name);
  }
  return node;
}

std::int32_t MemoryRegistry::Enter(Call call, Key key, std::uint32_t access, Node& node) const {
  if (const auto failure = failures_.find(call);
      failure != failures_.end() && failure->second != kSuccess) {
    return failure->second;
  }
  if (key >= kFirstRoot && key <= kLastRoot) {
    node = roots_.at(static_cast<std::uint32_t>(key));
    return kSuccess;
  }
  const auto handle = handles_.find(key);
  if (handle == handles_.end()) {
    return kInvalidHandle;
  }
  node = handle->second.node.lock();
  if (!node) {
    return kKeyDeleted;
  }
  return (handle->second.access & access) == 0 ? kAccessDenied : kSuccess;
}

std::int32_t MemoryRegistry::EnterParent(Call call, Key parent, const std::u16string& path,
                                         Node& node) const {
  if (path.starts_with(u'\\')) {
    return kBadPathName;
  }
  return TooLong(path) ? kInvalidParameter : Enter(call, parent, kAnyRight, node);
}

std::int32_t MemoryRegistry::NewHandle(const Node& node, std::uint32_t access, Key& opened) {
  opened = ++lastHandle_;
  handles_[opened] = {.node = node, .access = access};
  return kSuccess;
}

std::int32_t MemoryRegistry::OpenKey(Key parent, const std::u16string& path, std::uint32_t access,
                                     Key& opened) {
  Node node;
  if (const auto code = EnterParent(Call::Open, parent, path, node); code != kSuccess) {
    return code;
  }
  for (const auto& name : NamesOf(path)) {
    node = node->Child(name);
    if (!node) {
      return kFileNotFound;
    }
  }
  return MayOpen(*node, access) ? NewHandle(node, access, opened) : kAccessDenied;
}

std::int32_t MemoryRegistry::CreateKey(Key parent, const std::u16string& path, std::uint32_t access,
                                       Key& opened, std::uint32_t& disposition) {
  Node node;
  if (const auto code = EnterParent(Call::Create, parent, path, node); code != kSuccess) {
    return code;
  }
  disposition = kOpenedExisting;
  for (const auto& name : NamesOf(path)) {
    Node child = node->Child(name);
    if (!child && node->writeDenied()) {
      return kAccessDenied;
    }
    disposition = child ? kOpenedExisting : kCreated;
    node = child ? child : node->MakeChild(name);
  }
  return MayOpen(*node, access) ? NewHandle(node, access, opened) : kAccessDenied;
}

std::int32_t MemoryRegistry::QueryLimits(Key key, Limits& limits) {
  Node node;
  const auto code = Enter(Call::QueryLimits, key, kQueryValue, node);
  if (code == kSuccess) {
    limits = node->MeasureLimits();
  }
  return code;
}

std::int32_t MemoryRegistry::EnumValue(Key key, std::uint32_t index, const Limits& limits,
                                       ValueEntry& entry) {
  Node node;
  if (const auto code = Enter(Call::EnumValue, key, kQueryValue, node); code != kSuccess) {
    return code;
  }
  const std::size_t count = node->values().size();
  if (count == 0 || (index >= count && !endless_)) {
    return kNoMoreItems;
  }
  const ValueEntry& value = node->values()[std::min<std::size_t>(index, count - 1)];
  if (value.name.size() > limits.valueName || value.text.size() > limits.valueData) {
    return kMoreData;
  }
  entry = value;
  return kSuccess;
}

std::int32_t MemoryRegistry::EnumKey(Key key, std::uint32_t index, const Limits& limits,
                                     std::u16string& name) {
  Node node;
  if (const auto code = Enter(Call::EnumKey, key, kEnumerateSubKeys, node); code != kSuccess) {
    return code;
  }
  const std::size_t count = node->children().size();
  if (count == 0 || (index >= count && !endless_)) {
    return kNoMoreItems;
  }
  const Node& child = node->children()[std::min<std::size_t>(index, count - 1)];
  if (child->name().size() > limits.subkeyName) {
    return kMoreData;
  }
  name = child->name();
  return kSuccess;
}

std::int32_t MemoryRegistry::SetTextValue(Key key, const std::u16string& name,
                                          const std::u16string& text) {
  Node node;
  if (const auto code = Enter(Call::SetValue, key, kSetValue, node); code != kSuccess) {
    return code;
  }
  const std::u16string valueName = UntilNul(name);
  if (valueName.size() > kLongestValueName) {
    return kInvalidParameter;
  }
  node->SetValue({.name = valueName, .type = kTypeText, .text = text});
  return kSuccess;
}

std::int32_t MemoryRegistry::DeleteValue(Key key, const std::u16string& name) {
  Node node;
  if (const auto code = Enter(Call::DeleteValue, key, kSetValue, node); code != kSuccess) {
    return code;
  }
  return node->DeleteValue(UntilNul(name)) ? kSuccess : kFileNotFound;
}

std::int32_t MemoryRegistry::DeleteKey(Key parent, const std::u16string& name) {
  Node node;
  if (const auto code = EnterParent(Call::DeleteKey, parent, name, node); code != kSuccess) {
    return code;
  }
  // An empty name means the parent itself, as with the system.
  for (const auto& part : NamesOf(name)) {
    node = node->Child(part);
    if (!node) {
      return kFileNotFound;
    }
  }
  if (node->writeDenied() || !node->children().empty() || node->parent() == nullptr) {
    return kAccessDenied;
  }
  node->parent()->RemoveChild(*node);
  return kSuccess;
}

std::int32_t MemoryRegistry::CloseKey(Key key) {
  return handles_.erase(key) > 0 ? kSuccess : kInvalidHandle;
}

}  // namespace fakes
