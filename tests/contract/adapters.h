// This build's adapters, created in native/ or windows/.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace platform {
class Database;
class Files;
class ResultDocuments;
}  // namespace platform

namespace contract {

std::unique_ptr<platform::Database> NewDatabase();
std::unique_ptr<platform::Files> NewFiles();
std::unique_ptr<platform::ResultDocuments> NewResultDocuments();

// Keeps the file from being replaced: on Windows another program holds it open, elsewhere its
// folder is read-only.
std::shared_ptr<void> Held(const std::filesystem::path& file);

// A full path in the build's own spelling, as the component would be given it ("Z:\tmp\x" under
// Wine).
std::u16string PathText(const std::string& nativePath);

}  // namespace contract
