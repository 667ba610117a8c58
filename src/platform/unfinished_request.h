#pragma once

#include <string_view>

namespace platform {

// Appended to a file's name while the file is being written.
inline constexpr std::u16string_view kTemporaryEnding = u".tmp";

// Whether a file of that name (without folder) is one of the component's requests that is being
// written, or was when its host was killed.
constexpr bool IsUnfinishedRequest(std::u16string_view name) {
  return (name.starts_with(u"In") || name.starts_with(u"Search")) && name.ends_with(u".xml.tmp");
}

}  // namespace platform
