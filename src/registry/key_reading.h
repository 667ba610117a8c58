// An open key's values and subkeys, in the order in which the system enumerates them.
#pragma once

#include <string>
#include <vector>

#include "registry/key_handle.h"

namespace registry {

struct Entry {
  std::u16string name;
  std::u16string text;
};

// Both raise kCannotOpen if the key cannot be read to its end, and 6 "Overflow" beyond 32,767
// items, since the counts of the registry class have 16 bits.

// The values before the first that is not text; all later ones are left out, whatever their type.
// Kept: the host's keys hold their texts first.
std::vector<Entry> ReadTextValues(const KeyHandle& handle);

std::vector<std::u16string> ReadSubKeyNames(const KeyHandle& handle);

}  // namespace registry
