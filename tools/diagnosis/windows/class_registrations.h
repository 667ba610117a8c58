// Where the component's session class is registered.
#pragma once

#include <string>
#include <vector>

#include "diagnosis/core/computer.h"

namespace diagnosis {

// In the order in which COM looks: the manifest of the first host program that has the class, the
// user's registry, the machine's. Creates no object.
std::vector<ClassRegistration> ClassRegistrations(const std::vector<std::u16string>& hostPrograms);

}  // namespace diagnosis
