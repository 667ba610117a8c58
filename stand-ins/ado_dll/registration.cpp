#include "ado_dll/registration.h"

#include <algorithm>
#include <iterator>

#include "ado_dll/classes.h"

namespace ado_dll {

std::vector<com::RegisteredPart> Registration(const std::wstring& modulePath) {
  std::vector<com::RegisteredPart> parts;
  std::transform(Classes().begin(), Classes().end(), std::back_inserter(parts),
                 [&](const auto& entry) { return com::ClassPart(entry, modulePath); });
  return parts;
}

}  // namespace ado_dll
