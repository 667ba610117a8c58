// Finds the link program and the exchange directory, and starts the program.
#pragma once

#include <optional>
#include <string>

#include "util/attempt.h"

namespace host {

// Full path of Link.exe; nothing if it cannot be found, which the user has then been told. A stale
// per-user setting is cleared but still returned: the start then fails with its own message.
std::optional<std::u16string> GetVilnorCommandLine();

// The exchange directory, without a trailing backslash. Created if missing.
util::Attempt<std::u16string> GetVilnorOutputPath();

// Starts the link program on a request file, or without arguments when `requestPath` is empty.
void StartVilnor(const std::u16string& exePath, const std::u16string& requestPath);

// Stores the per-user setting that names Link.exe.
void SetVilnorPath(const std::u16string& path);

}  // namespace host
