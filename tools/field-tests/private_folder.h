// A folder in a place that every user can write, into which only this user and administrators can.
#pragma once

#include <filesystem>
#include <string>

namespace field_tests {

// Creates it, or takes an existing one. False if it cannot be created. Raises CannotWork if
// somebody else can have written into an existing one, or if it is a link to another folder.
bool MakePrivateFolder(const std::filesystem::path& path);

// "S-1-5-…". Raises CannotWork if the system does not tell.
std::wstring ThisUser();

}  // namespace field_tests
