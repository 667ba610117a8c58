#include "platform/result_document.h"

#include <algorithm>

namespace platform {
namespace {

// Ten times as many kept a parser busy for 84 seconds. What the link program writes has a handful.
constexpr std::ptrdiff_t kMostAttributes = 10'000;

}  // namespace

// A "<" cannot stand in an attribute's value, and each attribute has its "=": that there are not
// more of them up to the next "<" is enough, whatever the bytes are encoded as.
bool HasTooManyAttributes(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::string_view element = bytes.substr(0, bytes.find('<'));
    if (std::count(element.begin(), element.end(), '=') > kMostAttributes) {
      return true;
    }
    bytes.remove_prefix(std::min(element.size() + 1, bytes.size()));
  }
  return false;
}

}  // namespace platform
