// What the report tells about the computer. Nothing that names a person or the computer itself.
#pragma once

#include <filesystem>

#include "field-tests/core/report.h"

namespace field_tests {

Facts ComputerFacts();
bool IsWine();
// "Vilnor.dll 1.5.3.0, Commit 0123…"
std::string ComponentVersion(const std::filesystem::path& dll);

}  // namespace field_tests
