#include "native/paths.h"

#include <algorithm>

#include "automation/text.h"

namespace native {

std::filesystem::path NativePath(const std::u16string& path) {
  std::string text = automation::ToUtf8(path);
  std::replace(text.begin(), text.end(), '\\', '/');
  return text;
}

}  // namespace native
