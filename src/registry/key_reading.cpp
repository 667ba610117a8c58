#include "registry/key_reading.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>

#include "automation/automation_error.h"
#include "platform/platform.h"
#include "platform/registry_api.h"
#include "registry/errors.h"

namespace registry {
namespace {

using platform::RegistryApi;

constexpr std::size_t kMostItems = std::numeric_limits<std::int16_t>::max();

RegistryApi& Api() {
  return platform::Current().registry;
}

RegistryApi::Limits QueryLimits(const KeyHandle& handle) {
  RegistryApi::Limits limits;
  if (Api().QueryLimits(handle.key(), limits) != RegistryApi::kSuccess) {
    RaiseCannotOpen();
  }
  return limits;
}

bool Exceeds(const RegistryApi::Limits& wider, const RegistryApi::Limits& limits) {
  return wider.valueName > limits.valueName || wider.valueData > limits.valueData ||
         wider.subkeyName > limits.subkeyName;
}

// Calls `read(index, limits)`, which returns the system's code, and `take()`, which returns whether
// to continue, until the system has no more items. An item that has outgrown the limits is read
// again with wider ones.
template <class Read, class Take>
void Enumerate(const KeyHandle& handle, Read read, Take take) {
  RegistryApi::Limits limits = QueryLimits(handle);
  for (std::uint32_t index = 0;;) {
    const std::int32_t code = read(index, limits);
    if (code == RegistryApi::kNoMoreItems) {
      return;
    }
    if (code == RegistryApi::kMoreData) {
      const RegistryApi::Limits wider = QueryLimits(handle);
      if (!Exceeds(wider, limits)) {
        RaiseCannotOpen();
      }
      limits = wider;
      continue;
    }
    if (code != RegistryApi::kSuccess) {
      RaiseCannotOpen();
    }
    if (!take()) {
      return;
    }
    ++index;
  }
}

template <class Item>
void Append(std::vector<Item>& items, Item item) {
  if (items.size() == kMostItems) {
    throw automation::AutomationError(automation::RuntimeError::Overflow);
  }
  items.push_back(std::move(item));
}

}  // namespace

std::vector<Entry> ReadTextValues(const KeyHandle& handle) {
  std::vector<Entry> values;
  RegistryApi::ValueEntry value;
  Enumerate(
      handle,
      [&](std::uint32_t index, const RegistryApi::Limits& limits) {
        return Api().EnumValue(handle.key(), index, limits, value);
      },
      [&] {
        if (value.type != RegistryApi::kTypeText) {
          return false;
        }
        Append(values, {.name = value.name, .text = value.text});
        return true;
      });
  return values;
}

std::vector<std::u16string> ReadSubKeyNames(const KeyHandle& handle) {
  std::vector<std::u16string> names;
  std::u16string name;
  Enumerate(
      handle,
      [&](std::uint32_t index, const RegistryApi::Limits& limits) {
        return Api().EnumKey(handle.key(), index, limits, name);
      },
      [&] {
        Append(names, name);
        return true;
      });
  return names;
}

}  // namespace registry
