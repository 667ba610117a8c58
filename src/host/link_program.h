// Where the link program and the exchange directory are, and how the program is started.
#pragma once

#include <optional>
#include <string>

#include "util/attempt.h"

namespace host {

// Full path of Link.exe; nothing when it cannot be found, and the user has been told. A stale
// per-user setting is forgotten but still returned: the start then fails with a message of its own.
std::optional<std::u16string> GetVilnorCommandLine();

// The exchange directory without a trailing backslash, created when it is missing.
util::Attempt<std::u16string> GetVilnorOutputPath();

// Starts the link program on a request file, or without arguments when `requestPath` is empty.
void StartVilnor(const std::u16string& exePath, const std::u16string& requestPath);

// Stores the per-user setting that names Link.exe.
void SetVilnorPath(const std::u16string& path);

}  // namespace host
