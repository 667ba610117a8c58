// Where the link program and the exchange directory are, and how the program is started.
#pragma once

#include <string>

namespace host {

// Full path of Link.exe, "" when it cannot be found, which the user has then been told. A stale
// per-user setting is forgotten but still returned: the start then fails with a message of its own.
std::u16string GetVilnorCommandLine();

// The exchange directory without a trailing backslash, created when it is missing; "" after an
// error.
std::u16string GetVilnorOutputPath();

// Starts the link program on a request file, or without arguments when `requestPath` is empty.
void StartVilnor(const std::u16string& exePath, const std::u16string& requestPath);

// Stores the per-user setting that names Link.exe.
void SetVilnorPath(const std::u16string& path);

}  // namespace host
